// What MIDI 1.0 calls the controllers.
#pragma once

#include <string>

namespace Backend::MidiEngine {

// Of controller 0..127; "Undefined" for one without a name and for any other number.
[[nodiscard]] const std::string& controllerName(int controller);

} // namespace Backend::MidiEngine
