// What became of an incoming message, in words.
#pragma once

#include "midiinput/InputSteps.h"

#include <string>

namespace Host {

// A line for the message, then an indented one for each step: which look-up found which configuration, each condition
// with the byte that it saw and its outcome, what was done and sent. `input` is the port's name. Lines end with "\n".
//
//     In 1: Note On, channel 1, 60 (C4), 100
//       configured for its input on any channel: Note On,60
//       D2 gt 63 with 100: holds
//       MidiNoteOn zone="1" d1="D1 +12" d2="D2": Note On, default channel, 72 (C5), 100, zone 1
[[nodiscard]] std::string textOf(const Backend::MidiInput::InputSteps& steps, const std::string& input);

} // namespace Host
