// The layers of a program as presets hold them.
#pragma once

#include "midiengine/LayerList.h"

#include <string>

namespace Backend {

struct LayerSet {
    Layers::LayerList layers;
    // The preset that the section was last loaded from or saved as; may be empty.
    std::string presetName;

    void clear() { layers.clear(); }
    // Appends the layers of the other set, since a layer's only id is its place.
    void merge(const LayerSet& other);
    // True when both would be stored alike.
    [[nodiscard]] bool hasSameActions(const LayerSet& other) const;
};

} // namespace Backend
