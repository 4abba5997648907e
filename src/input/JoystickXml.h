// The section "Joystick" of program and preset files.
#pragma once

#include "input/JoystickMap.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"

#include <iosfwd>

namespace Backend::Joystick {

// The section element and all below it.
[[nodiscard]] const ElementFormat& joystickFormat();

// Reads a section into `map`; an element of another name is ignored. merge="true" keeps axes and buttons that the
// section does not name. Unknown functions are left out of their entries. The preset that it names is not looked at:
// what that stands for is the caller's business.
void readJoystick(const Platform::XmlElement& section, QelIF& qel, JoystickMap& map);

// The stream's state is the caller's to check.
void writeJoystick(std::ostream& out, int depth, const JoystickMap& map);
// Only the axes and buttons of the selection, to be merged into another section.
struct JoystickSelection {
    std::vector<JoyAxisElementId> axes;
    std::vector<JoyButtonElementId> buttons;

    [[nodiscard]] bool empty() const { return axes.empty() && buttons.empty(); }
};
void writeJoystick(std::ostream& out, int depth, const JoystickMap& map, const JoystickSelection& selection);

} // namespace Backend::Joystick
