// What one button of a joystick does.
#pragma once

#include "input/KeyConfiguration.h"
#include "values/JoyButtonElementId.h"

#include <optional>
#include <vector>

namespace Backend::Joystick {

struct JoystickButtonConfiguration {
    JoyButtonElementId button;
    std::vector<ComputerInput::FunctionEntry> entries{}; // executed in this order

    // Without its idle entries; nothing when no other is left.
    [[nodiscard]] std::optional<JoystickButtonConfiguration> activePart() const;
    friend bool operator==(const JoystickButtonConfiguration&, const JoystickButtonConfiguration&) = default;
};

} // namespace Backend::Joystick
