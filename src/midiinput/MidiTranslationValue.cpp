#include "midiinput/MidiTranslationValue.h"

#include "values/TextNumbers.h"
#include "values/Words.h"

#include <algorithm>
#include <array>

namespace Backend::MidiInput::TranslationManagement {

namespace {

// At the number of their kind.
constexpr std::array<std::string_view, 3> selections{"up", "down", "selected"};

// Without the blanks before it: the text up to the next blank, and what stands behind.
std::string_view takeWord(std::string_view& text) noexcept {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
}

} // namespace

MidiTranslationValue::MidiTranslationValue(std::string_view text) noexcept {
    std::string_view rest = text;
    const std::string_view word = takeWord(rest);
    if (word == "D1" || word == "D2") {
        const std::string_view offset = takeWord(rest);
        kind_ = word == "D1" ? Kind::d1 : Kind::d2;
        if (!offset.empty()) {
            kind_ = word == "D1" ? Kind::d1Offset : Kind::d2Offset;
            number_ = RelativeFixedValue::relative(readDecimal(offset).value_or(0));
        }
    } else if (const auto place = word.empty() ? std::nullopt : placeOf(word, selections)) {
        kind_ = static_cast<Kind>(*place);
    } else {
        number_ = RelativeFixedValue(text);
    }
}

std::int32_t MidiTranslationValue::evaluate(const MidiEngine::MidiMessage& incoming) const noexcept {
    switch (kind_) {
    case Kind::up:
    case Kind::down:
    case Kind::selected:
        return 0;
    case Kind::d1:
        return incoming.getD1();
    case Kind::d2:
        return incoming.getD2();
    case Kind::d1Offset:
        return RelativeFixedValue::relative(number_.getValue()).applyTo(incoming.getD1());
    case Kind::d2Offset:
        return RelativeFixedValue::relative(number_.getValue()).applyTo(incoming.getD2());
    case Kind::number:
        break;
    }
    return number_.getValue();
}

RelativeFixedValue MidiTranslationValue::asChange(const MidiEngine::MidiMessage& incoming) const noexcept {
    if (isFromByte()) {
        return RelativeFixedValue::fixed(evaluate(incoming));
    }
    return kind_ == Kind::up || kind_ == Kind::down || kind_ == Kind::selected ? RelativeFixedValue() : number_;
}

std::string MidiTranslationValue::toXmlString() const {
    const auto withOffset = [this](const char* byte) {
        const std::int32_t offset = number_.getValue();
        return byte + std::string(offset >= 0 ? " +" : " ") + std::to_string(offset);
    };
    switch (kind_) {
    case Kind::up:
    case Kind::down:
    case Kind::selected:
        return std::string(selections[static_cast<std::size_t>(kind_)]);
    case Kind::d1:
        return "D1";
    case Kind::d2:
        return "D2";
    case Kind::d1Offset:
        return withOffset("D1");
    case Kind::d2Offset:
        return withOffset("D2");
    case Kind::number:
        break;
    }
    return number_.toXmlString();
}

} // namespace Backend::MidiInput::TranslationManagement
