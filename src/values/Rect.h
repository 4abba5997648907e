// A rectangle on the screen.
#pragma once

#include <cstdint>

namespace WindowsLib {

// In pixels; right and bottom lie outside. Stored as these four numbers, little-endian.
struct Rect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace WindowsLib
