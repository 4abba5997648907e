// The panels of the user interface.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace Gui {

enum class Panel : std::size_t {
    system,
    help,
    display,
    oscillator,
    joystick,
    computerInput,
    midiInput,
    output,
    cc,
    layer,
    control,
    zone,
    count
};

inline constexpr std::size_t panelCount = static_cast<std::size_t>(Panel::count);

// Names for settings and tests, in the order of the enumeration.
inline constexpr std::array<std::string_view, panelCount> panelNames{
    "system",    "help",   "display", "oscillator", "joystick", "computerInput",
    "midiInput", "output", "cc",      "layer",      "control",  "zone"};

} // namespace Gui
