// The section "ComputerInput" of program and preset files.
#pragma once

#include "input/KeyConfigurationMap.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"

#include <iosfwd>
#include <vector>

namespace Backend::ComputerInput {

// The section element and all below it.
[[nodiscard]] const ElementFormat& computerInputFormat();

// Reads a section into `map`; an element of another name is ignored. merge="true" keeps keys that the section does not
// name. Unknown functions are left out of their entries. The preset that the section names is not looked at: what it
// stands for is the caller's business.
void readComputerInput(const Platform::XmlElement& section, QelIF& qel, KeyConfigurationMap& map);

// The stream's state is the caller's to check.
void writeComputerInput(std::ostream& out, int depth, const KeyConfigurationMap& map);
// The name of the map's preset in place of its keys.
void writeComputerInputReference(std::ostream& out, int depth, const KeyConfigurationMap& map);
// Only the given keys, to be merged into another section.
void writeComputerInput(std::ostream& out, int depth, const KeyConfigurationMap& map, const std::vector<Key>& keys);

} // namespace Backend::ComputerInput
