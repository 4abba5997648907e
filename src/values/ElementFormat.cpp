#include "values/ElementFormat.h"

#include "values/TextNumbers.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <utility>

namespace {

template <typename Format> const Format* find(const std::vector<Format>& formats, std::string_view name) {
    const auto found = std::find_if(formats.begin(), formats.end(), [&](const auto& f) { return f.name == name; });
    return found == formats.end() ? nullptr : &*found;
}

class Checker final {
public:
    Checker(const std::string& file, std::vector<Platform::Fault>& faults, const PresetLookup& presetExists)
        : file_(file), faults_(faults), presetExists_(presetExists) {}

    void check(const Platform::XmlElement& element, const ElementFormat& format) {
        if (format.unchecked) {
            return;
        }
        for (const auto& attribute : element.attributes) {
            checkAttribute(element, attribute, format);
        }
        checkText(element, format);
        if (format.oneChild && element.children.size() > 1) {
            add(element.children[1], "<" + element.name + "> holds one element only");
        }
        std::map<std::string, int> lines; // of what may be there once
        for (const auto& child : element.children) {
            if (const auto* const childFormat = find(format.children, child.name)) {
                checkOnlyOne(child, *childFormat, lines);
                check(child, *childFormat);
            } else {
                add(child, "unknown element <" + child.name + "> in <" + element.name + ">");
            }
        }
    }

    void add(const Platform::XmlElement& element, std::string reason) {
        faults_.push_back({file_, element.line, std::move(reason)});
    }

private:
    void checkText(const Platform::XmlElement& element, const ElementFormat& format) {
        if (!format.holdsText && !trimmed(element.text).empty()) {
            add(element, "<" + element.name + "> holds no text");
        }
    }

    void checkOnlyOne(const Platform::XmlElement& element, const ElementFormat& format,
                      std::map<std::string, int>& lines) {
        if (!format.once && format.id.empty()) {
            return;
        }
        std::string id = "<" + element.name;
        for (const std::string_view name : format.id) {
            const auto* const value = element.attribute(name);
            const auto text = value != nullptr ? std::string_view(*value) : format[name].defaultText;
            id += " " + std::string(name) + "=\"" + format[name].normalised(text) + "\"";
        }
        id += ">";
        const auto [first, isNew] = lines.try_emplace(id, element.line);
        if (!isNew) {
            add(element, id + " is there twice, first in line " + std::to_string(first->second));
        }
    }

    void checkAttribute(const Platform::XmlElement& element, const Platform::XmlAttribute& attribute,
                        const ElementFormat& format) {
        const auto* const attributeFormat = find(format.attributes, attribute.name);
        if (attributeFormat == nullptr) {
            add(element, "unknown attribute " + attribute.name + " of <" + element.name + ">");
        } else if (const auto fault = attributeFormat->faultOf(attribute.value)) {
            add(element, attribute.name + " of <" + element.name + ">: " + *fault);
        } else if (!attributeFormat->presetFolder.empty() && !attribute.value.empty() && presetExists_ &&
                   !presetExists_(attributeFormat->presetFolder, attribute.value)) {
            add(element, attribute.name + " of <" + element.name + ">: there is no \"" + attribute.value + "\" in \"" +
                             std::string(attributeFormat->presetFolder) + "\"");
        }
    }

    const std::string& file_;
    std::vector<Platform::Fault>& faults_;
    const PresetLookup& presetExists_;
};

} // namespace

bool ElementFormat::hasAttribute(std::string_view attributeName) const {
    return find(attributes, attributeName) != nullptr;
}

const AttributeFormat& ElementFormat::operator[](std::string_view attributeName) const {
    const auto* const format = find(attributes, attributeName);
    assert(format != nullptr);
    return *format;
}

const ElementFormat& ElementFormat::child(std::string_view childName) const {
    const auto* const format = find(children, childName);
    assert(format != nullptr);
    return *format;
}

void checkElement(const Platform::XmlElement& element, const ElementFormat& format, const std::string& file,
                  std::vector<Platform::Fault>& faults, const PresetLookup& presetExists) {
    Checker checker(file, faults, presetExists);
    if (element.name != format.name) {
        checker.add(element, "<" + element.name + "> where <" + std::string(format.name) + "> belongs");
        return;
    }
    checker.check(element, format);
}
