// The engine's time unit: 480 ticks a quarter note, counted in 32 bits.
#pragma once

#include <compare>
#include <cstdint>

namespace Backend {

// A point in the engine's time, or a distance between two. Negative: none.
struct Ticks {
    std::int32_t count = 0;

    friend constexpr auto operator<=>(Ticks, Ticks) = default;
    friend constexpr Ticks operator+(Ticks a, Ticks b) { return {a.count + b.count}; }
    friend constexpr Ticks operator-(Ticks a, Ticks b) { return {a.count - b.count}; }
    constexpr Ticks& operator++() {
        ++count;
        return *this;
    }
    constexpr Ticks& operator+=(Ticks other) {
        count += other.count;
        return *this;
    }
};

inline constexpr std::int32_t ticksPerQuarter = 480;
inline constexpr Ticks noTicks{-1};
// Where the engine's time starts: far above zero, so that no time computed from a clock is ever negative.
inline constexpr Ticks engineTimeOrigin{50'000'000};

} // namespace Backend
