// A message that was sent, for whoever shows it.
#pragma once

#include "values/MidiMessage.h"

#include <cstdint>

namespace Backend::Display {

struct DisplayRecord {
    MidiEngine::MidiMessage message;
    std::int8_t output = -1;
    std::int8_t input = -1;         // the MIDI input that it came from; -1: none
    std::int8_t zone = -1;          // -1: none
    std::int16_t layer = -1;        // the place of the layer that sent it; -1: none
    std::uint32_t milliseconds = 0; // when it was sent, by a clock that wraps at 32 bits
};

} // namespace Backend::Display
