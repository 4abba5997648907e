// The places of keys on a keyboard, as the first set of scan codes numbers them.
#pragma once

#include <cstdint>

namespace Desktop {

// The key code (class Key) of a scan code of set 1; `extended`: the one behind a byte 0xE0. 0: none that is known.
[[nodiscard]] std::uint32_t codeOfPlace(std::uint32_t scanCode, bool extended);

// The key code of one of the toolkit's keys, for events without a scan code.
[[nodiscard]] std::uint32_t codeOfToolkitKey(int key, bool numpad);

} // namespace Desktop
