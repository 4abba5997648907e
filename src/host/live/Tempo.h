// How fast ticks follow one another.
#pragma once

#include <compare>
#include <cstdint>

namespace Host {

// In thousandths of a beat a minute: a clock that is followed has no whole tempo.
struct Tempo {
    std::int32_t thousandths = 120'000;

    constexpr Tempo() = default;
    constexpr Tempo(int beatsPerMinute) : thousandths(beatsPerMinute * 1000) {}
    // To the nearest thousandth.
    [[nodiscard]] static constexpr Tempo of(double beatsPerMinute) {
        Tempo tempo;
        tempo.thousandths = static_cast<std::int32_t>(beatsPerMinute * 1000 + 0.5);
        return tempo;
    }
    [[nodiscard]] constexpr double beatsPerMinute() const { return thousandths / 1000.0; }

    friend constexpr auto operator<=>(Tempo, Tempo) = default;
};

} // namespace Host
