// The layers of a program, in order.
#pragma once

#include "midiengine/Layer.h"

#include <vector>

namespace Backend::Layers {

// Layer i of the list has index i. At most maxLayers of them: what a file holds beyond is not read.
using LayerList = std::vector<Layer>;
inline constexpr std::size_t maxLayers = 1024;

// What a program without layers of its own plays with: one layer that passes everything to the default output.
[[nodiscard]] LayerList defaultLayers();

} // namespace Backend::Layers
