// Decides alike on every system which texts are XML documents. The systems' own parsers differ in what they let
// pass; they only see what has passed here.
#pragma once

#include "platform/Result.h"

#include <string_view>
#include <vector>

namespace Platform {

struct CheckedXml {
    std::string_view body;       // the text behind byte order mark and XML declaration, well-formed
    std::vector<int> startLines; // of all start tags in the order of the document, counted from 1 in the whole text
};

// Checks a whole document against XML 1.0 and the bounds in XmlDocument.h.
[[nodiscard]] Result<CheckedXml> checkXml(std::string_view text, const std::string& name);

} // namespace Platform
