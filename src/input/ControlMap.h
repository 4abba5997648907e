// The controls of a program, by their cells.
#pragma once

#include "input/Control.h"
#include "input/ElementCollection.h"

#include <string>

namespace Backend::Controls {

struct ControlMap : Component::ElementCollection<Cell, Control> {
    // The preset that the section was last loaded from or saved as; may be empty.
    std::string presetName;
};

} // namespace Backend::Controls
