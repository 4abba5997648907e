#include "input/JoystickAxis.h"

#include <algorithm>
#include <limits>

namespace Backend::Joystick {

namespace {

// Division rounded down; the divisor is above 0.
std::int64_t dividedDown(std::int64_t number, std::int64_t divisor) {
    return number / divisor - (number % divisor < 0 ? 1 : 0);
}

} // namespace

std::int32_t AxisEvent::scaled(std::int32_t position) const noexcept {
    const std::int64_t raw = std::clamp(position, 0, greatestPosition);
    const std::int64_t span = std::int64_t{max} - min;
    const std::int64_t value = min + dividedDown(raw * span + greatestPosition / 2, greatestPosition) + offset;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                                              std::numeric_limits<std::int32_t>::max()));
}

std::optional<AxisConfiguration> AxisConfiguration::activePart() const {
    return events.empty() ? std::nullopt : std::optional(*this);
}

} // namespace Backend::Joystick
