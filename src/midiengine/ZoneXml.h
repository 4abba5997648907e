// The section "Zones" of a program or preset file.
#pragma once

#include "midiengine/ZoneMap.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"
#include "values/XmlWriter.h"

namespace Backend::Zones {

// The section element and all below it.
[[nodiscard]] const ElementFormat& zonesFormat();

// Reads a section into `zones` and selects the zone with the lowest id. merge="true" keeps zones that the section
// does not name; an id that is there already, in the map or earlier in the section, takes the new transposition.
// Ids outside 0..127 are passed over.
void readZones(const Platform::XmlElement& section, ZoneMap& zones);

// Writes the section.
void writeZones(XmlWriter& xml, const ZoneMap& zones);

} // namespace Backend::Zones
