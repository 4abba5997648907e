// What all axes and buttons of the joysticks do.
#pragma once

#include "input/ElementCollection.h"
#include "input/JoystickAxis.h"
#include "input/JoystickButton.h"

#include <string>

namespace Backend::Joystick {

struct JoystickMap {
    Component::ElementCollection<JoyAxisElementId, AxisConfiguration> axes;
    Component::ElementCollection<JoyButtonElementId, JoystickButtonConfiguration> buttons;
    // The preset that the section was last loaded from or saved as; may be empty.
    std::string presetName;

    void clear() {
        axes.clear();
        buttons.clear();
    }
    // Adds the elements of the other map; they replace those with the same ids.
    void merge(const JoystickMap& other) {
        axes.merge(other.axes);
        buttons.merge(other.buttons);
    }
    [[nodiscard]] bool hasSameActions(const JoystickMap& other) const {
        return axes.hasSameActions(other.axes) && buttons.hasSameActions(other.buttons);
    }
};

} // namespace Backend::Joystick
