// Names an axis of a joystick.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// The axis counts the fields of a position record (X, Y, Z, R, U, V): 0..5, -1: none.
struct JoyAxisElementId {
    std::int32_t joystick = 0;
    std::int32_t axis = -1;

    // "X" = 0, "Y" = 1, "Z" = 2, "U" = 3, "V" = 4, "R" = 5, any other text -1. Deliberately not the order of the
    // record: stored presets rely on it.
    [[nodiscard]] static std::int32_t axisFromLetter(std::string_view letter) noexcept;
    // The letter of the axis, empty for none.
    [[nodiscard]] std::string axisLetter() const;

    friend auto operator<=>(const JoyAxisElementId&, const JoyAxisElementId&) = default;
};

template <> struct std::hash<JoyAxisElementId> {
    [[nodiscard]] std::size_t operator()(const JoyAxisElementId& id) const noexcept {
        return std::hash<std::uint64_t>{}(static_cast<std::uint64_t>(static_cast<std::uint32_t>(id.joystick)) << 32 |
                                          static_cast<std::uint32_t>(id.axis));
    }
};
