// The controls of a program, by their cells.
#pragma once

#include "input/Control.h"
#include "input/ElementCollection.h"

#include <string>

namespace Backend::Controls {

struct ControlMap : Component::ElementCollection<Cell, Control> {
    // The preset that the section was last loaded from or saved as; may be empty.
    std::string presetName;

    // Adds the controls of the other map; they replace those in the same cells.
    void merge(const ControlMap& other) {
        for (const auto& [cell, control] : other) {
            store(cell, control);
        }
    }
};

} // namespace Backend::Controls
