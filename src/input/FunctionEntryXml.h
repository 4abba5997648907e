// The elements "Function" of a key or a button: what happens when it goes down and when it comes up.
#pragma once

#include "input/KeyConfiguration.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"
#include "values/XmlWriter.h"

#include <iosfwd>
#include <vector>

namespace Backend::ComputerInput {

[[nodiscard]] ElementFormat functionEntryFormat();
// The entries below an element. Unknown functions are left out of their entries.
[[nodiscard]] std::vector<FunctionEntry> readFunctionEntries(const Platform::XmlElement& holder, QelIF& qel);
// Into the element that was begun last, which stands behind `depth` tabs of the writer's stream.
void writeFunctionEntries(XmlWriter& xml, std::ostream& out, int depth, const std::vector<FunctionEntry>& entries);

} // namespace Backend::ComputerInput
