// Makes functions from XML elements and keywords, and says which there are.
#pragma once

#include "input/Function.h"
#include "platform/Result.h"
#include "platform/XmlDocument.h"
#include "values/ElementFormat.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Backend::FunctionManagement {

// A function from an element: its name is the keyword, exactly. Null for an unknown keyword.
[[nodiscard]] std::unique_ptr<Function> createFunction(const Platform::XmlElement& element, QelIF& qel);
// A function with default settings: the selected item, no change, toggle, the default way. Null for an unknown keyword.
[[nodiscard]] std::unique_ptr<Function> createDefaultFunction(std::string_view keyword, QelIF& qel);

// Executes the function of an XML text once; a text that is no element of a function is a fault. [backend]
[[nodiscard]] Platform::Outcome executeFunction(const std::string& xml, QelIF& qel);

// Implemented by what offers a choice of functions.
class FunctionEnumerator {
public:
    virtual ~FunctionEnumerator() = default;
    virtual void addFunction(std::string_view keyword, std::string_view displayName) = 0;
};
// Calls the enumerator for each function that may be offered, in the order of lists.
void enumerateFunctions(FunctionEnumerator& enumerator);

// The elements of all functions, as they may stand where one function is held.
[[nodiscard]] const std::vector<ElementFormat>& functionFormats();

} // namespace Backend::FunctionManagement
