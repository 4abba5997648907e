// The notes that the routing benchmarks play: a Note On and its Note Off in turn, over the keyboard.
#pragma once

#include <cstdint>

struct BenchNote {
    bool on;
    std::int8_t key;
    std::int8_t velocity;
};

[[nodiscard]] inline BenchNote benchNote(std::uint32_t i) {
    const bool on = (i & 1U) == 0;
    return {on, static_cast<std::int8_t>((i >> 1U) % 116), static_cast<std::int8_t>(on ? 1 + i % 126 : 0)};
}
