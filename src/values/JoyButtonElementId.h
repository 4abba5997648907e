// Names a button of a joystick.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>

// Buttons are 0..31.
struct JoyButtonElementId {
    std::int32_t joystick = 0;
    std::int32_t button = 0;

    friend auto operator<=>(const JoyButtonElementId&, const JoyButtonElementId&) = default;
};

template <> struct std::hash<JoyButtonElementId> {
    [[nodiscard]] std::size_t operator()(const JoyButtonElementId& id) const noexcept {
        return std::hash<std::uint64_t>{}(static_cast<std::uint64_t>(static_cast<std::uint32_t>(id.joystick)) << 32 |
                                          static_cast<std::uint32_t>(id.button));
    }
};
