#include "platform/XmlDocument.h"

#include "platform/XmlParser.h"

#include <iterator>
#include <pugixml.hpp>

namespace Platform {
namespace {

// Takes the line of each element from the front of `line`.
XmlElement elementOf(const pugi::xml_node& node, std::vector<int>::const_iterator& line) {
    XmlElement element;
    element.name = node.name();
    element.line = *line++;
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        element.attributes.push_back({attribute.name(), attribute.value()});
    }
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_element) {
            element.children.push_back(elementOf(child, line));
        } else {
            element.text += child.value(); // text or CDATA: nothing else is parsed
        }
    }
    return element;
}

} // namespace

Result<XmlElement> parseCheckedXml(const CheckedXml& xml, const std::string& name) {
    constexpr unsigned options =
        pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol | pugi::parse_ws_pcdata | pugi::parse_wconv_attribute;
    pugi::xml_document document;
    const pugi::xml_parse_result outcome =
        document.load_buffer(xml.body.data(), xml.body.size(), options, pugi::encoding_utf8);
    if (!outcome) {
        return Fault{name, 0, outcome.description()};
    }
    auto line = xml.startLines.begin();
    return elementOf(document.document_element(), line);
}

} // namespace Platform
