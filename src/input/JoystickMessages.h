// What the window is sent about the joysticks.
#pragma once

#include "platform/ThreadMessages.h"

#include <cstdint>

namespace Backend::Joystick {

// The section is another: wParam a heap copy of the JoystickMap.
inline constexpr std::uint32_t joysticksMessage = Platform::applicationMessage + 1702;
// An axis has moved: wParam the joystick in bits 8 and up, the axis below; lParam its position 0..65535.
inline constexpr std::uint32_t axisMovedMessage = Platform::applicationMessage + 1706;
// A button: wParam as above; lParam 1 down, 0 up.
inline constexpr std::uint32_t buttonMovedMessage = Platform::applicationMessage + 1707;

} // namespace Backend::Joystick
