// The controls that a program without controls of its own starts with.
#pragma once

#include "input/ControlMap.h"

namespace Backend::Controls {

// Pitch bend, modulation, volume, sustain, aftertouch, bank, program and pan, some with a number field below.
[[nodiscard]] const ControlMap& defaultControls();

} // namespace Backend::Controls
