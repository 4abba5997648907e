// The section "Controls" of program and preset files.
#pragma once

#include "input/ControlMap.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"

#include <iosfwd>
#include <vector>

namespace Backend::Controls {

// The section element and all below it.
[[nodiscard]] const ElementFormat& controlsFormat();

// Reads a section into `map`; an element of another name is ignored. merge="true" keeps controls in cells that the
// section does not name. The preset that it names is not looked at: what that stands for is the caller's business.
void readControls(const Platform::XmlElement& section, ControlMap& map);

// The stream's state is the caller's to check.
void writeControls(std::ostream& out, int depth, const ControlMap& map);
// Only the controls in these cells, to be merged into another section.
void writeControls(std::ostream& out, int depth, const ControlMap& map, const std::vector<Cell>& cells);

} // namespace Backend::Controls
