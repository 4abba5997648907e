// Decides alike on every system which texts are XML documents. The systems' own parsers differ in what they let
// pass; they only see what has passed here.
#pragma once

#include "platform/Result.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace Platform {

// From its first byte to behind its last one, in the whole text.
struct XmlSpan {
    std::size_t begin = 0;
    std::size_t end = 0;
};

// An element directly in the root.
struct XmlTopElement {
    std::string_view name;
    XmlSpan startTag;
    XmlSpan element; // its tags included
};

struct CheckedXml {
    std::string_view body;       // the text behind byte order mark and XML declaration, well-formed
    std::vector<int> startLines; // of all start tags in the order of the document, counted from 1 in the whole text
    std::string_view rootName;
    std::vector<XmlTopElement> topElements; // in the order of the document
    XmlSpan rootEndTag;                     // of no length when the root is an empty-element tag
};

// Checks a whole document against XML 1.0 and the bounds in XmlDocument.h.
[[nodiscard]] Result<CheckedXml> checkXml(std::string_view text, const std::string& name);

} // namespace Platform
