// A place in the grid of on-screen controls.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// The first coordinate is the row, counted downward, the second the column; both 0-based, -1: none. Ordered by row,
// then column.
struct Cell {
    std::int32_t x = -1;
    std::int32_t y = -1;

    // "x,y" in decimal. A part that is missing or no number stays -1.
    [[nodiscard]] static Cell fromText(std::string_view text) noexcept;
    [[nodiscard]] std::string toXmlString() const;

    // For a message: x in bits 16..31, y in 0..15; coordinates of -1..32767 travel.
    [[nodiscard]] std::uint32_t getPacked() const noexcept {
        return static_cast<std::uint32_t>(x) << 16 | (static_cast<std::uint32_t>(y) & 0xFFFF);
    }
    [[nodiscard]] static Cell fromPacked(std::uint32_t packed) noexcept {
        return {static_cast<std::int16_t>(packed >> 16), static_cast<std::int16_t>(packed)};
    }

    friend auto operator<=>(const Cell&, const Cell&) = default;
};

template <> struct std::hash<Cell> {
    [[nodiscard]] std::size_t operator()(const Cell& cell) const noexcept {
        return std::hash<std::uint64_t>{}(static_cast<std::uint64_t>(static_cast<std::uint32_t>(cell.x)) << 32 |
                                          static_cast<std::uint32_t>(cell.y));
    }
};
