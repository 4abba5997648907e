// The system's own list of MIDI devices.
#pragma once

#include <string>

namespace Platform {

// True when there is a MIDI input device of exactly that name. Where programs make virtual ports themselves, as on
// Linux, every virtual port exists: always true. [any]
[[nodiscard]] bool virtualMidiInputExists(const std::string& name);

} // namespace Platform
