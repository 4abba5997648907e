#include "input/JoystickButton.h"

namespace Backend::Joystick {

std::optional<JoystickButtonConfiguration> JoystickButtonConfiguration::activePart() const {
    JoystickButtonConfiguration active = *this;
    std::erase_if(active.entries, [](const ComputerInput::FunctionEntry& entry) { return entry.isIdle(); });
    return active.entries.empty() ? std::nullopt : std::optional(std::move(active));
}

} // namespace Backend::Joystick
