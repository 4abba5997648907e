// What the window is sent about the joysticks.
#pragma once

#include <cstdint>

namespace Backend::Joystick {

// The section is another: wParam a heap copy of the JoystickMap.
inline constexpr std::uint32_t joysticksMessage = 34470;
// An axis has moved: wParam the joystick in bits 8 and up, the axis below; lParam its position 0..65535.
inline constexpr std::uint32_t axisMovedMessage = 34474;
// A button: wParam as above; lParam 1 down, 0 up.
inline constexpr std::uint32_t buttonMovedMessage = 34475;

} // namespace Backend::Joystick
