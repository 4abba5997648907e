// Names an oscillator.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>

// The place in the list, 0-based; -1: none.
struct OscId {
    std::int32_t index = -1;

    friend auto operator<=>(OscId, OscId) = default;
};

template <> struct std::hash<OscId> {
    [[nodiscard]] std::size_t operator()(OscId id) const noexcept { return std::hash<std::int32_t>{}(id.index); }
};
