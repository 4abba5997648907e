#include "values/ElementFormat.h"

#include "values/TextNumbers.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace {

template <typename Format> const Format* find(const std::vector<Format>& formats, std::string_view name) {
    const auto found = std::find_if(formats.begin(), formats.end(), [&](const auto& f) { return f.name == name; });
    return found == formats.end() ? nullptr : &*found;
}

class Checker final {
public:
    Checker(const std::string& file, std::vector<Platform::Fault>& faults) : file_(file), faults_(faults) {}

    void check(const Platform::XmlElement& element, const ElementFormat& format) {
        if (format.unchecked) {
            return;
        }
        for (const auto& attribute : element.attributes) {
            checkAttribute(element, attribute, format);
        }
        if (!format.holdsText && !trimmed(element.text).empty()) {
            add(element, "<" + element.name + "> holds no text");
        }
        for (const auto& child : element.children) {
            if (const auto* const childFormat = find(format.children, child.name)) {
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
    void checkAttribute(const Platform::XmlElement& element, const Platform::XmlAttribute& attribute,
                        const ElementFormat& format) {
        const auto* const attributeFormat = find(format.attributes, attribute.name);
        if (attributeFormat == nullptr) {
            add(element, "unknown attribute " + attribute.name + " of <" + element.name + ">");
        } else if (const auto fault = attributeFormat->faultOf(attribute.value)) {
            add(element, attribute.name + " of <" + element.name + ">: " + *fault);
        }
    }

    const std::string& file_;
    std::vector<Platform::Fault>& faults_;
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
                  std::vector<Platform::Fault>& faults) {
    Checker checker(file, faults);
    if (element.name != format.name) {
        checker.add(element, "<" + element.name + "> where <" + std::string(format.name) + "> belongs");
        return;
    }
    checker.check(element, format);
}
