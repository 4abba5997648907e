#include "midiinput/TranslationAttributes.h"

namespace Backend::Actions {

using MidiInput::TranslationManagement::MidiTranslationValue;
using MidiInput::TranslationManagement::TranslationSelection;

template <> AttributeFormat attributeOf<MidiTranslationValue>(std::string_view name, std::string_view meaning) {
    return AttributeFormat::of(AttributeKind::translationValue, name, "", meaning);
}

template <> AttributeFormat attributeOf<TranslationSelection>(std::string_view name, std::string_view meaning) {
    AttributeFormat format = AttributeFormat::of(AttributeKind::translationValue, name, "selected", meaning);
    format.words = {"up", "down", "selected", "all"};
    return format;
}

} // namespace Backend::Actions

namespace Backend::MidiInput::TranslationManagement {

AttributeFormat channelAttribute(std::string_view name, std::string_view meaning) {
    AttributeFormat format = AttributeFormat::of(AttributeKind::select, name, "default", meaning);
    format.words = {"unchanged", "default"};
    format.minimum = -2;
    format.maximum = 15;
    return format;
}

AttributeFormat conditionAttribute() {
    return AttributeFormat::of(AttributeKind::translationCondition, "condition", "Off",
                               "When it is done: Off is always.");
}

} // namespace Backend::MidiInput::TranslationManagement
