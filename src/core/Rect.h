// A rectangle on the screen.
#pragma once

#include <cstdint>

namespace WindowsLib {

// Pixels from the screen's upper left corner; right and bottom lie just outside.
struct Rect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    bool operator==(const Rect&) const = default;
};

} // namespace WindowsLib
