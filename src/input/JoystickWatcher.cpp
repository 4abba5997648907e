#include "input/JoystickWatcher.h"

namespace Backend::Joystick {

using Platform::JoystickPosition;

std::int32_t JoystickWatcher::axisValue(std::int32_t axis, std::int32_t raw) noexcept {
    constexpr std::int32_t greatest = 65535;
    return axis == 1 || axis == 4 ? greatest - raw : raw;
}

void JoystickWatcher::look(const Platform::JoystickPositions& positions, std::uint32_t milliseconds) {
    for (std::size_t i = 0; i < positions.size(); ++i) {
        Watched& watched = watched_[i];
        if (watched.position) {
            JoystickPosition now = positions[i].value_or(*watched.position);
            if (!positions[i]) {
                now.buttons = 0;
            }
            follow(static_cast<std::int32_t>(i), watched, now, milliseconds);
        }
        watched.position = positions[i];
    }
}

void JoystickWatcher::follow(std::int32_t joystick, Watched& before, const JoystickPosition& now,
                             std::uint32_t milliseconds) {
    for (std::size_t i = 0; i < now.axes.size(); ++i) {
        const auto axis = static_cast<std::int32_t>(i);
        if (now.axes[i] != before.position->axes[i]) {
            listener_.axisChanged({joystick, axis}, axisValue(axis, now.axes[i]));
        }
    }
    for (std::size_t i = 0; i < before.holds.size(); ++i) {
        const std::uint32_t bit = std::uint32_t{1} << i;
        followButton({joystick, static_cast<std::int32_t>(i)}, before.holds[i], (before.position->buttons & bit) != 0,
                     (now.buttons & bit) != 0, milliseconds);
    }
}

void JoystickWatcher::followButton(const JoyButtonElementId& button, std::optional<Hold>& hold, bool wasDown,
                                   bool isDown, std::uint32_t milliseconds) {
    if (isDown && !wasDown) {
        hold = Hold{milliseconds, std::nullopt};
        listener_.buttonDown(button, false);
    } else if (wasDown && !isDown) {
        hold.reset();
        listener_.buttonUp(button);
    } else if (hold && milliseconds - hold->pressed >= REPEAT_DELAY_MILLISECONDS &&
               (!hold->repeated || milliseconds - *hold->repeated > REPEAT_INTERVAL_MILLISECONDS)) {
        hold->repeated = milliseconds;
        listener_.buttonDown(button, true);
    }
}

} // namespace Backend::Joystick
