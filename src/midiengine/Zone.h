// A numbered region of the instruments on screen and under the fingers, with a transposition of its own.
#pragma once

#include "values/Note.h"

#include <cstdint>

namespace Backend::Zones {

// What the engine remembers of the notes that are held in a zone is kept with the other held notes.
struct Zone {
    std::int8_t id = 0;        // 0..127
    std::int8_t transpose = 0; // semitones, -127..127
    Note lowNote;              // kept with the zone, not stored; nobody reads them yet
    Note highNote;
    bool selected = false; // what "selected" means to functions

    bool operator==(const Zone&) const = default;
};

} // namespace Backend::Zones
