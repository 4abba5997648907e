// What the window is sent about the oscillators.
#pragma once

#include "platform/ThreadMessages.h"

#include <cstdint>

namespace Backend::Oscillators {

// The list is another, or something in it has changed: wParam a heap copy of an OscList that belongs to the window.
inline constexpr std::uint32_t oscListMessage = Platform::applicationMessage + 2701;
// A playing oscillator has come to a value: wParam its id, lParam the value. Of values that come faster than they can
// be posted the latest is.
inline constexpr std::uint32_t oscMovedMessage = Platform::applicationMessage + 2707;

} // namespace Backend::Oscillators
