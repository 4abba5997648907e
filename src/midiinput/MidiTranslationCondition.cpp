#include "midiinput/MidiTranslationCondition.h"

#include "values/TextNumbers.h"
#include "values/Words.h"

#include <array>

namespace Backend::MidiInput::TranslationManagement {

namespace {

// At the number of their operator.
constexpr std::array<std::string_view, 6> operators{"lt", "gt", "le", "ge", "eq", "ne"};

// The text before the next blank, taken off the text with that blank.
std::string_view takeWord(std::string_view& text) noexcept {
    const std::size_t blank = text.find(' ');
    const std::string_view word = text.substr(0, blank);
    text = blank == std::string_view::npos ? std::string_view{} : text.substr(blank + 1);
    return word;
}

} // namespace

MidiTranslationCondition::MidiTranslationCondition(std::string_view text) noexcept {
    const std::string_view byte = takeWord(text);
    byte_ = byte == "D1" ? Byte::d1 : byte == "D2" ? Byte::d2 : Byte::off;
    if (const auto place = placeOf(takeWord(text), operators)) {
        operator_ = static_cast<Operator>(*place);
    }
    value_ = readDecimal(takeWord(text)).value_or(0);
}

std::int32_t MidiTranslationCondition::comparedByte(const MidiEngine::MidiMessage& incoming) const noexcept {
    return byte_ == Byte::off ? 0 : byte_ == Byte::d1 ? incoming.getD1() : incoming.getD2();
}

bool MidiTranslationCondition::holdsFor(const MidiEngine::MidiMessage& incoming) const noexcept {
    if (byte_ == Byte::off) {
        return true;
    }
    const std::int32_t number = comparedByte(incoming);
    switch (operator_) {
    case Operator::lt:
        return number < value_;
    case Operator::gt:
        return number > value_;
    case Operator::le:
        return number <= value_;
    case Operator::ge:
        return number >= value_;
    case Operator::eq:
        return number == value_;
    case Operator::ne:
        return number != value_;
    }
    return false;
}

std::string MidiTranslationCondition::toXmlString() const {
    if (byte_ == Byte::off) {
        return "Off";
    }
    std::string text = byte_ == Byte::d1 ? "D1 " : "D2 ";
    const auto place = static_cast<std::size_t>(operator_);
    text += place < operators.size() ? operators[place] : operators[static_cast<std::size_t>(Operator::eq)];
    return text + ' ' + std::to_string(value_);
}

} // namespace Backend::MidiInput::TranslationManagement
