// The elements "Function" of a key or a button: what happens when it goes down and when it comes up.
#pragma once

#include "input/KeyConfiguration.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"
#include "values/XmlWriter.h"

#include <vector>

namespace Backend::ComputerInput {

[[nodiscard]] ElementFormat functionEntryFormat();
// The entries below an element. Unknown functions are left out of their entries.
[[nodiscard]] std::vector<FunctionEntry> readFunctionEntries(const Platform::XmlElement& holder, QelIF& qel);
// Into the element that was begun last.
void writeFunctionEntries(XmlWriter& xml, const std::vector<FunctionEntry>& entries);

} // namespace Backend::ComputerInput
