// What RtMidi serves on this system.
#pragma once

namespace Host {

struct RtMidiHost {
    const char* name;  // of the MIDI system: "ALSA", "WinMM"
    int api;           // an RtMidi::Api
    bool virtualPorts; // whether ports of our own can be made
    bool (*isThere)(); // false: not worth asking, RtMidi would fail or complain
};

[[nodiscard]] const RtMidiHost& rtMidiHost() noexcept; // [any]

} // namespace Host
