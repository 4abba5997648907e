#include "values/XmlElementText.h"

#include "values/TextNumbers.h"
#include "values/XmlWriter.h"

#include <ostream>
#include <string>
#include <string_view>

namespace {

// As escapeXml, and white space that a reader would take for layout as references.
std::string escapedWithLayout(std::string_view text, std::string_view layout) {
    std::string escaped;
    for (const char c : escapeXml(text)) {
        if (layout.find(c) != std::string_view::npos) {
            escaped += "&#" + std::to_string(static_cast<int>(c)) + ";";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

} // namespace

void writeAttribute(std::ostream& out, const Platform::XmlAttribute& attribute) {
    out << ' ' << attribute.name << "=\"" << escapedWithLayout(attribute.value, "\n\t\r") << '"';
}

void writeElement(std::ostream& out, int depth, const Platform::XmlElement& element) {
    const std::string indent(static_cast<std::size_t>(depth), '\t');
    const bool hasText = !trimmed(element.text).empty();
    out << indent << '<' << element.name;
    for (const Platform::XmlAttribute& attribute : element.attributes) {
        writeAttribute(out, attribute);
    }
    if (!hasText && element.children.empty()) {
        out << "/>\n";
        return;
    }
    out << '>';
    if (hasText) {
        out << escapedWithLayout(element.children.empty() ? element.text : trimmed(element.text), "\r");
    }
    if (!element.children.empty()) {
        out << '\n';
        for (const Platform::XmlElement& child : element.children) {
            writeElement(out, depth + 1, child);
        }
        out << indent;
    }
    out << "</" << element.name << ">\n";
}
