// The XML attributes in which the values of translations stand.
#pragma once

#include "input/ActionAttributes.h"
#include "midiinput/MidiTranslationValue.h"
#include "midiinput/TranslationSelection.h"

#include <string_view>

namespace Backend::Actions {

template <>
[[nodiscard]] AttributeFormat
attributeOf<MidiInput::TranslationManagement::MidiTranslationValue>(std::string_view name, std::string_view meaning);
template <>
[[nodiscard]] AttributeFormat
attributeOf<MidiInput::TranslationManagement::TranslationSelection>(std::string_view name, std::string_view meaning);

} // namespace Backend::Actions

namespace Backend::MidiInput::TranslationManagement {

// Of a ChannelTranslation, and of a MidiTranslationCondition.
[[nodiscard]] AttributeFormat channelAttribute(std::string_view name, std::string_view meaning);
[[nodiscard]] AttributeFormat conditionAttribute();

} // namespace Backend::MidiInput::TranslationManagement
