#include "input/ActionAttributes.h"

namespace Backend::Actions {

template <> AttributeFormat attributeOf<OnOffToggle>(std::string_view name, std::string_view meaning) {
    return AttributeFormat::wordOf(name, {"on", "off", "toggle"}, "toggle", meaning);
}

template <> AttributeFormat attributeOf<SelectType>(std::string_view name, std::string_view meaning) {
    AttributeFormat format = AttributeFormat::of(AttributeKind::select, name, "selected", meaning);
    format.words = {"up", "down", "selected", "all"};
    format.minimum = 0;
    return format;
}

template <> AttributeFormat attributeOf<RelativeFixedValue>(std::string_view name, std::string_view meaning) {
    return AttributeFormat::of(AttributeKind::relativeFixed, name, "", meaning);
}

template <> AttributeFormat attributeOf<NoteToggle>(std::string_view name, std::string_view meaning) {
    return AttributeFormat::wordOf(name, {"off", "type1", "type2"}, "off", meaning);
}

template <> AttributeFormat attributeOf<SelectControlType>(std::string_view name, std::string_view meaning) {
    AttributeFormat format = AttributeFormat::of(AttributeKind::selectControl, name, "selected", meaning);
    format.words = {"up", "down", "left", "right", "selected", "all"};
    return format;
}

template <> AttributeFormat attributeOf<std::string>(std::string_view name, std::string_view meaning) {
    return AttributeFormat::of(AttributeKind::text, name, "", meaning);
}

} // namespace Backend::Actions
