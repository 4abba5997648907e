#include "platform/XmlDocument.h"

#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "platform/XmlParser.h"

#include <algorithm>

namespace Platform {

const std::string* XmlElement::attribute(std::string_view attributeName) const noexcept {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [attributeName](const XmlAttribute& each) { return each.name == attributeName; });
    return found == attributes.end() ? nullptr : &found->value;
}

const XmlElement* XmlElement::child(std::string_view childName) const noexcept {
    const auto found = std::find_if(children.begin(), children.end(),
                                    [childName](const XmlElement& each) { return each.name == childName; });
    return found == children.end() ? nullptr : &*found;
}

Result<XmlElement> parseXml(std::string_view text, const std::string& name) {
    const Result<CheckedXml> checked = checkXml(text, name);
    if (!checked) {
        return checked.fault();
    }
    return parseCheckedXml(checked.value(), name);
}

Result<XmlElement> readXmlFile(const std::filesystem::path& file) {
    const Result<std::string> text = readWholeFile(file, maxXmlBytes);
    if (!text) {
        return text.fault();
    }
    return parseXml(text.value(), textOf(file));
}

} // namespace Platform
