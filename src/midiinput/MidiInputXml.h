// The section "MidiInput" of program and preset files.
#pragma once

#include "midiinput/MidiEventConfigurationMap.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"

#include <iosfwd>
#include <vector>

namespace Backend::MidiInput {

// The section element and all below it.
[[nodiscard]] const ElementFormat& midiInputFormat();

// Reads a section into `map`; an element of another name is ignored. merge="true" keeps configurations that the section
// does not name. A translation that there is not stands in its configuration as null. The preset that the section names
// is not looked at: what it stands for is the caller's business.
void readMidiInput(const Platform::XmlElement& section, MidiEventConfigurationMap& map);

// Every configuration that is not the default. The stream's state is the caller's to check.
void writeMidiInput(std::ostream& out, int depth, const MidiEventConfigurationMap& map);
// Only the given events, to be merged into another section: also those that are the default, and empty ones for those
// that have no configuration, which takes it from them.
void writeMidiInput(std::ostream& out, int depth, const MidiEventConfigurationMap& map,
                    const std::vector<MidiEvent>& events);

} // namespace Backend::MidiInput
