// How the backend is, in what a player wants to see at a glance.
#pragma once

#include "values/Cell.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Backend {

// A copy: it changes nothing and does not follow.
struct QelStatus {
    struct SelectedZone {
        int id = 0;
        int transpose = 0; // semitones
        int count = 1;     // how many zones are selected; this is the one with the lowest id
        bool operator==(const SelectedZone&) const = default;
    };
    struct SelectedControl {
        Cell cell;
        std::string name;
        std::int32_t value = 0;
        int count = 1; // how many controls are selected; this is the first by row, then column
        bool operator==(const SelectedControl&) const = default;
    };

    std::string program; // name
    int slot = 0;        // of the bank, 0-based
    std::optional<SelectedZone> zone;
    std::optional<SelectedControl> control;
    int tempo = 120; // beats a minute

    bool operator==(const QelStatus&) const = default;
};

} // namespace Backend
