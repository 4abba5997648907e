// What the window is sent about the controls. Cells travel packed (Cell).
#pragma once

#include <cstdint>

namespace Backend::Controls {

// Controls were added or replaced: wParam a heap copy of a vector<Control> that belongs to the window.
inline constexpr std::uint32_t controlsPutMessage = 33969;
// The section is another: wParam a heap copy of the ControlMap.
inline constexpr std::uint32_t controlsMessage = 33970;
// Other controls are selected: wParam a heap copy of a set<Cell>.
inline constexpr std::uint32_t controlsSelectedMessage = 33977;
// A control has moved: wParam its cell, lParam its value.
inline constexpr std::uint32_t controlMovedMessage = 33971;
// A control is to have the keyboard: wParam the kind of a SelectControlType, lParam its cell.
inline constexpr std::uint32_t focusControlMessage = 0x84B5;

} // namespace Backend::Controls
