// What the window is sent about the controls. Cells travel packed (Cell).
#pragma once

#include "platform/ThreadMessages.h"

#include <cstdint>

namespace Backend::Controls {

// Controls were added or replaced: wParam a heap copy of a vector<Control> that belongs to the window.
inline constexpr std::uint32_t controlsPutMessage = Platform::applicationMessage + 1201;
// The section is another: wParam a heap copy of the ControlMap.
inline constexpr std::uint32_t controlsMessage = Platform::applicationMessage + 1202;
// Other controls are selected: wParam a heap copy of a set<Cell>.
inline constexpr std::uint32_t controlsSelectedMessage = Platform::applicationMessage + 1209;
// A control has moved: wParam its cell, lParam its value.
inline constexpr std::uint32_t controlMovedMessage = Platform::applicationMessage + 1203;
// A control is to have the keyboard: wParam the kind of a SelectControlType, lParam its cell.
inline constexpr std::uint32_t focusControlMessage = Platform::applicationMessage + 1205;

} // namespace Backend::Controls
