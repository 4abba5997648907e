// What one axis of a joystick sends.
#pragma once

#include "input/ValueEvent.h"
#include "values/JoyAxisElementId.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Backend::Joystick {

// An event with the range that the axis is mapped onto.
struct AxisEvent {
    static constexpr std::int32_t greatestPosition = 65535;

    ValueEvent event;
    std::int32_t min = 0;   // at position 0
    std::int32_t max = 127; // at position 65535; below min: mirrored
    std::int32_t offset = 0;

    // min + (position * (max - min) + 32767) / 65535 rounded down, exact at both ends, plus the offset. Positions
    // beyond 0..65535 are taken as the nearest.
    [[nodiscard]] std::int32_t scaled(std::int32_t position) const noexcept;
    // The event with that, clamped to what it takes.
    [[nodiscard]] MidiEngine::QelMidiMessage at(std::int32_t position) const noexcept {
        return event.withValue(scaled(position));
    }

    friend bool operator==(const AxisEvent&, const AxisEvent&) = default;
};

struct AxisConfiguration {
    JoyAxisElementId axis;
    std::vector<AxisEvent> events{}; // sent in this order

    // Nothing when it sends nothing.
    [[nodiscard]] std::optional<AxisConfiguration> activePart() const;
    friend bool operator==(const AxisConfiguration&, const AxisConfiguration&) = default;
};

} // namespace Backend::Joystick
