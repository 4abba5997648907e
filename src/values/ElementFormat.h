// What an XML element holds, described once for reading, checking and documentation.
#pragma once

#include "platform/Result.h"
#include "platform/XmlDocument.h"
#include "values/AttributeFormat.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

struct ElementFormat {
    std::string_view name;
    std::string_view meaning; // one line
    std::vector<AttributeFormat> attributes;
    std::vector<ElementFormat> children;
    bool holdsText = false; // character data is part of it
    bool unchecked = false; // attributes and content are whatever they are
    bool once = false;      // its parent holds it at most once
    bool oneChild = false;  // it holds at most one element
    // The attributes that name it among those of its kind in the same parent; none: it has no name.
    std::vector<std::string_view> id = {};

    [[nodiscard]] bool hasAttribute(std::string_view attributeName) const;
    // The description of an attribute that must be there.
    [[nodiscard]] const AttributeFormat& operator[](std::string_view attributeName) const;
    // The description of a child that must be there.
    [[nodiscard]] const ElementFormat& child(std::string_view childName) const;
};

// True when there is that preset.
using PresetLookup = std::function<bool(std::string_view folder, const std::string& name)>;

// Adds a fault, with file and line, for everything in the element that the format does not allow: elements,
// attributes, texts, values, what is there twice, presets that there are not. `file` names the source in the faults.
// Without `presetExists` all presets are taken for granted.
void checkElement(const Platform::XmlElement& element, const ElementFormat& format, const std::string& file,
                  std::vector<Platform::Fault>& faults, const PresetLookup& presetExists = {});
