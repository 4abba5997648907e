// The names of lengths in musical time.
#pragma once

#include <cstdint>
#include <string>

// "1/4" for 480 ticks, "1/8 Triplet" for 160, "1/4 Dotted" for 720, "Whole" for 1920, "2 Whole" for 3840; the number
// itself for a length without a name.
[[nodiscard]] std::string timeIntervalName(std::int32_t ticks);
