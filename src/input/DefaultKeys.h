// The built-in computer keyboard.
#pragma once

#include "platform/XmlDocument.h"

namespace Backend::ComputerInput {

// The section of the built-in keyboard: two piano rows, bend, modulation and sustain, and keys that move zones,
// controls, panels and the window.
[[nodiscard]] const Platform::XmlElement& defaultComputerInput();

} // namespace Backend::ComputerInput
