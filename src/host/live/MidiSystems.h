// Finding the MIDI system to play through.
#pragma once

#include "host/live/MidiSystem.h"
#include "host/live/PortWishes.h"
#include "platform/Result.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Host {

enum class MidiSystemKind { jack, alsa, winmm, none };

struct FoundMidiSystem {
    std::unique_ptr<MidiSystem> system;
    bool isNone = false; // nothing can be heard: what is played is to be printed
    std::string remark;  // what was found, in one line, for the user
};

// The system that was asked for, or the first that answers: JACK, then ALSA or WinMM if there are ports or some can be
// made, then none. A fault when the one asked for is missing or a wish cannot be met. [main]
[[nodiscard]] Platform::Result<FoundMidiSystem> findMidiSystem(std::optional<MidiSystemKind> asked,
                                                               const PortWishes& wishes);

// Every system that answers. [main]
[[nodiscard]] std::vector<std::unique_ptr<MidiSystem>> findMidiSystems(const PortWishes& wishes);

} // namespace Host
