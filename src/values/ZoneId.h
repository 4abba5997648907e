// Names a zone.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>

// The number of the zone, 0..127; -1: none.
struct ZoneId {
    std::int32_t id = -1;

    friend auto operator<=>(ZoneId, ZoneId) = default;
};

template <> struct std::hash<ZoneId> {
    [[nodiscard]] std::size_t operator()(ZoneId id) const noexcept { return std::hash<std::int32_t>{}(id.id); }
};
