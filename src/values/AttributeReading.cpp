#include "values/AttributeReading.h"

#include "values/TextNumbers.h"

#include <algorithm>
#include <cassert>
#include <string_view>

namespace {

// The attribute's value if there is one and `isReadable` likes it, else the default text.
template <typename Test>
std::string_view readableText(const Platform::XmlElement& element, const AttributeFormat& format,
                              const Test& isReadable) {
    const auto* const text = element.attribute(format.name);
    return text != nullptr && isReadable(std::string_view(*text)) ? std::string_view(*text) : format.defaultText;
}

std::string_view wellFormedText(const Platform::XmlElement& element, const AttributeFormat& format) {
    return readableText(element, format, [&](std::string_view text) { return !format.faultOf(text); });
}

bool beginsWithNumber(std::string_view text) {
    return readDecimal(text).has_value();
}

std::int32_t limited(std::int32_t number, const AttributeFormat& format) {
    return format.clamped ? std::clamp(number, format.minimum, format.maximum) : number;
}

} // namespace

bool readBoolean(const Platform::XmlElement& element, const AttributeFormat& format) {
    assert(format.kind == AttributeKind::boolean);
    return wellFormedText(element, format) == "true";
}

std::int32_t readInteger(const Platform::XmlElement& element, const AttributeFormat& format) {
    assert(format.kind == AttributeKind::integer);
    return limited(readDecimal(readableText(element, format, beginsWithNumber)).value_or(0), format);
}

Note readNote(const Platform::XmlElement& element, const AttributeFormat& format) {
    const auto text = wellFormedText(element, format);
    return format.kind == AttributeKind::pitch ? Note::fromPitchName(text) : Note::fromName(text);
}

RelativeFixedValue readRelativeFixed(const Platform::XmlElement& element, const AttributeFormat& format) {
    assert(format.kind == AttributeKind::relativeFixed);
    RelativeFixedValue value(readableText(
        element, format, [](std::string_view text) { return trimmed(text).empty() || beginsWithNumber(text); }));
    value.setValue(limited(value.getValue(), format));
    return value;
}

Fraction readFraction(const Platform::XmlElement& element, const AttributeFormat& format) {
    assert(format.kind == AttributeKind::fraction);
    return Fraction(wellFormedText(element, format));
}

std::int32_t readWord(const Platform::XmlElement& element, const AttributeFormat& format) {
    assert(format.kind == AttributeKind::word);
    const auto place = format.placeOfWord(wellFormedText(element, format));
    assert(place);
    return place.value_or(0);
}

Cell readCell(const Platform::XmlElement& element, const AttributeFormat& format) {
    assert(format.kind == AttributeKind::cell);
    return Cell::fromText(readText(element, format));
}

Backend::MidiEngine::MidiMessage readMidiEvent(const Platform::XmlElement& element, const AttributeFormat& format) {
    assert(format.kind == AttributeKind::midiEvent);
    return Backend::MidiEngine::MidiMessage(std::string_view(readText(element, format)));
}

Key readKey(const Platform::XmlElement& element, const AttributeFormat& format) {
    assert(format.kind == AttributeKind::key);
    return Key(std::string_view(readText(element, format)));
}

std::string readText(const Platform::XmlElement& element, const AttributeFormat& format) {
    const auto* const text = element.attribute(format.name);
    return text != nullptr ? *text : std::string(format.defaultText);
}
