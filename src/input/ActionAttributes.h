// The XML attributes in which the values of an action stand.
#pragma once

#include "input/Action.h"
#include "platform/XmlDocument.h"
#include "values/AttributeFormat.h"
#include "values/NoteToggle.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectControlType.h"
#include "values/SelectType.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Backend::Actions {

// The description of an attribute that holds a Value. An absent one means: toggle, the selected one, no change, no
// note toggle, an empty text.
template <typename Value> [[nodiscard]] AttributeFormat attributeOf(std::string_view name, std::string_view meaning);
template <> [[nodiscard]] AttributeFormat attributeOf<OnOffToggle>(std::string_view name, std::string_view meaning);
template <> [[nodiscard]] AttributeFormat attributeOf<SelectType>(std::string_view name, std::string_view meaning);
template <>
[[nodiscard]] AttributeFormat attributeOf<RelativeFixedValue>(std::string_view name, std::string_view meaning);
template <> [[nodiscard]] AttributeFormat attributeOf<NoteToggle>(std::string_view name, std::string_view meaning);
template <>
[[nodiscard]] AttributeFormat attributeOf<SelectControlType>(std::string_view name, std::string_view meaning);
template <> [[nodiscard]] AttributeFormat attributeOf<std::string>(std::string_view name, std::string_view meaning);

// The zone and the output that a message is sent to; 255: none, or the default one.
[[nodiscard]] std::vector<AttributeFormat> wayAttributes();
// One of them; a number that cannot be one is 255.
[[nodiscard]] std::uint8_t readWay(const Platform::XmlElement& element, const AttributeFormat& format);

// Where the action loads a preset, the attribute with its name says from which folder.
void namePresetFolder(const Action& action, std::vector<AttributeFormat>& formats);

// Reads the attribute `name`; absent, the value stays as it is. Any text reads as some value, by the rules of its type.
template <typename Value> void readAttribute(const Platform::XmlElement& element, std::string_view name, Value& value) {
    if (const std::string* text = element.attribute(name)) {
        value = Value(std::string_view(*text));
    }
}
template <> inline void readAttribute(const Platform::XmlElement& element, std::string_view name, NoteToggle& value) {
    if (const std::string* text = element.attribute(name)) {
        value = NoteToggle::fromExactText(*text);
    }
}

} // namespace Backend::Actions
