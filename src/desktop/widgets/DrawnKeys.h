// Where the keys of a computer keyboard stand, and what is printed on them.
#pragma once

#include <QString>
#include <cstdint>
#include <vector>

namespace Desktop {

// In units of a key, from the left and top of the keyboard.
struct DrawnKey {
    std::uint32_t code; // class Key
    double x, y, width;
};

constexpr double drawnColumns = 22.5;
constexpr double drawnRows = 6.25;

[[nodiscard]] const std::vector<DrawnKey>& drawnKeys();
// What stands on a key whose legend the system does not say.
[[nodiscard]] QString keyCaption(std::uint32_t code);

} // namespace Desktop
