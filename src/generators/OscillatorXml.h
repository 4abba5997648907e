// The section "Oscillators" of program and preset files.
#pragma once

#include "generators/OscList.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"

#include <iosfwd>
#include <vector>

namespace Backend::Oscillators {

// The section element and all below it.
[[nodiscard]] const ElementFormat& oscillatorsFormat();

// Reads a section into `list`; an element of another name is ignored. merge="true" appends its oscillators to those
// that are there, since an oscillator's only id is its place. None of those that were read is selected or playing. The
// preset that the section names is not looked at: what that stands for is the caller's business.
void readOscillators(const Platform::XmlElement& section, OscList& list);

// The stream's state is the caller's to check.
void writeOscillators(std::ostream& out, int depth, const OscList& list);
// Only these oscillators, in this order, to be appended to another section.
void writeOscillators(std::ostream& out, int depth, const OscList& list, const std::vector<OscId>& ids);

} // namespace Backend::Oscillators
