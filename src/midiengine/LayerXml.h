// The section "Layers" of a program or preset file.
#pragma once

#include "midiengine/LayerList.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"
#include "values/XmlWriter.h"

namespace Backend::Layers {

// The section element and all below it.
[[nodiscard]] const ElementFormat& layersFormat();

// Reads a section into `layers`. merge="true" appends its layers to those that are there, since a layer's only id is
// its place; otherwise they replace them. Missing and unreadable values take their defaults.
void readLayers(const Platform::XmlElement& section, LayerList& layers);

// Writes the section. `merge`: to be added to others.
void writeLayers(XmlWriter& xml, const LayerList& layers, bool merge = false);

} // namespace Backend::Layers
