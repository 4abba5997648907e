// Bringing a note number back onto the keyboard without changing its pitch class.
#pragma once

#include <cstdint>

namespace Backend::MidiEngine {

// The note of the same pitch class in 0..127 that is nearest to `note`.
[[nodiscard]] constexpr std::int8_t foldNote(std::int64_t note) {
    if (note < 0) {
        return static_cast<std::int8_t>(note + 12 * ((-note + 11) / 12));
    }
    if (note > 127) {
        return static_cast<std::int8_t>(note - 12 * ((note - 127 + 11) / 12));
    }
    return static_cast<std::int8_t>(note);
}

} // namespace Backend::MidiEngine
