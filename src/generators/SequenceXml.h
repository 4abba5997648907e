// Sequence files (".seq"): an element "SequenceFile" holding one "Sequence".
#pragma once

#include "generators/Sequence.h"
#include "platform/Result.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"
#include "values/XmlWriter.h"

#include <string>
#include <vector>

namespace Backend::SequenceManagement {

// The root element and all below it.
[[nodiscard]] const ElementFormat& sequenceFileFormat();

// The sequence of a file, from its root element; one without steps when there is none.
[[nodiscard]] Sequence readSequenceFile(const Platform::XmlElement& root);

// Writes the root element and all below it.
void writeSequenceFile(XmlWriter& xml, const Sequence& sequence);

// Adds a fault, with file and line, for everything that is wrong with the file, the text of its steps included.
void checkSequenceFile(const Platform::XmlElement& root, const std::string& file, std::vector<Platform::Fault>& faults);

} // namespace Backend::SequenceManagement
