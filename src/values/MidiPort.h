// The MIDI ports of the machine as the host lists them.
#pragma once

#include <string>

namespace Backend {

// A port is known by its place in the host's list (0-based, at most 127 in use) and found again by its name.
struct MidiPort {
    std::string name;     // as shown to the user
    std::string system;   // the MIDI system it belongs to: "JACK", "ALSA", "WinMM", "none"
    bool enabled = false; // open and in use
    bool present = true;  // false: it has vanished; its place is kept for its return

    bool operator==(const MidiPort&) const = default;
};

struct MidiInputPort : MidiPort {};
struct MidiOutputPort : MidiPort {};

} // namespace Backend
