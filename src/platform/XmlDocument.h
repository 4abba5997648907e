// Reading XML files into plain values.
#pragma once

#include "platform/Result.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

struct XmlAttribute {
    std::string name;
    std::string value; // UTF-8, entities resolved
};

// One element with all below it. Comments and processing instructions are left out. Line ends in text are "\n", in
// attribute values blanks, as are tabs there; as character references they stay what they are.
struct XmlElement {
    std::string name;
    int line = 0;                         // of its start tag, counted from 1
    std::vector<XmlAttribute> attributes; // in the order of the file
    std::vector<XmlElement> children;     // the elements, in the order of the file
    std::string text;                     // its own character data and CDATA, joined; white space is kept

    // The value of an attribute, or null when there is none.
    [[nodiscard]] const std::string* attribute(std::string_view attributeName) const noexcept;
    // The first child element of that name, or null.
    [[nodiscard]] const XmlElement* child(std::string_view childName) const noexcept;
};

// Bounds on what is read, so that a hostile file cannot exhaust memory or stack.
inline constexpr std::size_t maxXmlBytes = std::size_t{64} * 1024 * 1024;
inline constexpr int maxXmlDepth = 128; // the root is at depth 1
inline constexpr std::size_t maxXmlParts =
    1'000'000;                                       // elements, attributes, CDATA, comments ...: 4 bytes each, or more
inline constexpr std::size_t maxXmlAttributes = 256; // of one element

// Parses a UTF-8 document and gives its root element. `name` names the source in faults. Documents that are not
// well-formed (XML 1.0), not UTF-8, beyond the bounds above, or that use namespaces or have a document type declaration
// are faults. [any]
[[nodiscard]] Result<XmlElement> parseXml(std::string_view text, const std::string& name);

// The same of a file; an unreadable file is a fault.
[[nodiscard]] Result<XmlElement> readXmlFile(const std::filesystem::path& file);

} // namespace Platform
