#include "midiinput/TranslationSelection.h"

namespace Backend::MidiInput::TranslationManagement {

using Kind = MidiTranslationValue::Kind;

TranslationSelection::TranslationSelection(const SelectType& which)
    : TranslationSelection(std::string_view(which.toXmlString())) {}

TranslationSelection::TranslationSelection(std::string_view text) noexcept : all_(text == "all") {
    if (!all_) {
        value_ = MidiTranslationValue(text);
    }
}

std::optional<SelectType> TranslationSelection::forMessage(const MidiEngine::MidiMessage& incoming) const noexcept {
    if (all_) {
        return SelectType(SelectType::Kind::all);
    }
    switch (value_.getKind()) {
    case Kind::up:
        return SelectType(SelectType::Kind::up);
    case Kind::down:
        return SelectType(SelectType::Kind::down);
    case Kind::selected:
        return SelectType(SelectType::Kind::selected);
    case Kind::number:
        return value_.getNumber().isNoChange() ? SelectType() : SelectType::fixed(value_.getNumber().getValue());
    default:
        break;
    }
    const std::int32_t index = value_.evaluate(incoming);
    return index >= 0 ? std::optional(SelectType::fixed(index)) : std::nullopt;
}

std::string TranslationSelection::toXmlString() const {
    return all_ ? "all" : value_.toXmlString();
}

} // namespace Backend::MidiInput::TranslationManagement
