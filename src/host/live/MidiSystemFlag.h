// The option that names a MIDI system.
#pragma once

#include "host/live/MidiSystems.h"

#include <CLI/CLI.hpp>
#include <optional>

namespace Host {

// Adds --midi jack|alsa|winmm|none, which fills `kind`; it lives as long as the verb.
void addMidiSystemOption(CLI::App& verb, std::optional<MidiSystemKind>& kind);

} // namespace Host
