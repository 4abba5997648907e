// A MIDI message in words.
#pragma once

#include "values/MidiMessage.h"

#include <string>

namespace Host {

// "Note On, channel 1, 60 (C4), 100", "Controller Change, channel 16, 7: Channel Volume, 100", "Pitch Bend, channel 1,
// 8192", "Song Position, 96", "Timing Tick": the name, what the message has, channels counted from 1. [any]
[[nodiscard]] std::string textOf(const Backend::MidiEngine::MidiMessage& message);

} // namespace Host
