// What the status line says.
#pragma once

#include "core/QelStatus.h"
#include "host/live/Tempo.h"

#include <string>
#include <string_view>
#include <vector>

namespace Host {

struct StatusContent {
    Backend::QelStatus backend;
    Tempo tempo;         // as it is played
    bool hasBeat = true; // false: the tempo source is silent
    int heldNotes = 0;
    std::vector<std::string> inputs; // open ones, by name
    std::vector<std::string> outputs;
};

// In one line, what is looked at most first.
[[nodiscard]] std::string statusText(const StatusContent& content);

// As much of the UTF-8 text as fits, a column a character; control characters are question marks.
[[nodiscard]] std::string fitted(std::string_view text, int columns);

} // namespace Host
