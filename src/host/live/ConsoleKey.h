// A key as a console of Windows reports it.
#pragma once

#include "values/Key.h"

#include <cstdint>

namespace Host {

struct ConsoleKey {
    std::uint16_t virtualKey = 0; // where the key lies under the user's layout
    std::uint16_t scanCode = 0;   // of the hardware, set 1; 0 for a key that a program has made
    bool isExtended = false;      // one of those that stand twice: Right Control, the arrows beside the numpad ...
    std::uint32_t modifiers = 0;  // Key::Modifier
};

// Keys that type are taken by their place on a keyboard of the United States, the others by their meaning; the numpad
// is the same with and without Num Lock. No key when it is none of ours.
[[nodiscard]] Key keyOf(const ConsoleKey& key) noexcept;

} // namespace Host
