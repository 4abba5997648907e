// What all keys of the computer keyboard do.
#pragma once

#include "input/ElementCollection.h"
#include "input/KeyConfiguration.h"

#include <string>

namespace Backend::ComputerInput {

struct KeyConfigurationMap : Component::ElementCollection<Key, KeyConfiguration> {
    // Modifiers held at the release of a key count when its up functions are looked up; else those of the key without
    // modifiers run.
    bool useKeyUpMod = false;
    // The preset that the section was last loaded from or saved as; may be empty.
    std::string presetName;

    // Adds the keys of the other map, and takes over its useKeyUpMod.
    void merge(const KeyConfigurationMap& other) {
        ElementCollection::merge(other);
        useKeyUpMod = other.useKeyUpMod;
    }
    [[nodiscard]] bool hasSameActions(const KeyConfigurationMap& other) const {
        return useKeyUpMod == other.useKeyUpMod && ElementCollection::hasSameActions(other);
    }
};

} // namespace Backend::ComputerInput
