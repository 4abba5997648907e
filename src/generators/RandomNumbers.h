// Random numbers that are the same each time.
#pragma once

#include <cstdint>

namespace Backend::Oscillators {

// A sequence for each seed, the same on every system, so that renderings repeat.
class RandomNumbers final {
public:
    static constexpr std::int32_t largest = 32767;

    explicit RandomNumbers(std::uint32_t seed) noexcept : state_(seed) {}

    // 0..largest.
    [[nodiscard]] std::int32_t next() noexcept {
        state_ = state_ * 1103515245U + 12345U; // the low bits are poor and not used
        return static_cast<std::int32_t>(state_ >> 16 & 0x7FFFU);
    }

private:
    std::uint32_t state_;
};

} // namespace Backend::Oscillators
