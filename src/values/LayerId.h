// Names a layer.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>

// The place in the list, 0-based; -1: none.
struct LayerId {
    std::int32_t index = -1;

    friend auto operator<=>(LayerId, LayerId) = default;
};

template <> struct std::hash<LayerId> {
    [[nodiscard]] std::size_t operator()(LayerId id) const noexcept { return std::hash<std::int32_t>{}(id.index); }
};
