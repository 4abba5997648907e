#include "values/AttributeFormat.h"

#include "values/Cell.h"
#include "values/Key.h"
#include "values/MidiMessage.h"
#include "values/Note.h"
#include "values/TextNumbers.h"
#include "values/Words.h"

#include <algorithm>
#include <utility>

namespace {

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string joined(const std::vector<std::string_view>& words) {
    std::string list;
    for (const auto word : words) {
        list += (list.empty() ? "" : ", ") + (word.empty() ? quoted(word) : std::string(word));
    }
    return list;
}

// Two numbers with the separator between them.
bool isPair(std::string_view text, char separator) {
    const auto place = text.find(separator);
    return place != std::string_view::npos && isDecimal(text.substr(0, place)) && isDecimal(text.substr(place + 1));
}

bool isFraction(std::string_view text) {
    return isPair(text, '_') && readDecimal(text.substr(text.find('_') + 1)) != 0;
}

bool isMidiEvent(std::string_view text) {
    const auto comma = text.find(',');
    if (!Backend::MidiEngine::MidiMessage(text).isValid()) {
        return false;
    }
    if (comma == std::string_view::npos) {
        return true;
    }
    const auto number = text.substr(comma + 1);
    const auto d1 = readDecimal(number);
    return isDecimal(number) && d1 >= 0 && d1 <= 127;
}

bool isKeyName(std::string_view text) {
    return Key(text).getCode() != Key::UNKNOWN_CODE;
}

bool isTranslationValue(std::string_view text, const AttributeFormat& format) {
    if (text.starts_with("D1") || text.starts_with("D2")) {
        return text.size() == 2 || (text[2] == ' ' && isDecimal(text.substr(3)));
    }
    return format.placeOfWord(text).has_value() || trimmed(text).empty() || isDecimal(text);
}

bool isTranslationCondition(std::string_view text) {
    constexpr std::string_view operators[] = {" lt ", " gt ", " le ", " ge ", " eq ", " ne "};
    constexpr std::size_t number = 6; // where it stands
    return text == "Off" || ((text.starts_with("D1") || text.starts_with("D2")) && text.size() > number &&
                             placeOf(text.substr(2, 4), operators) && isDecimal(text.substr(number)));
}

bool hasRightForm(std::string_view text, const AttributeFormat& format) {
    switch (format.kind) {
    case AttributeKind::boolean:
        return text == "true" || text == "false";
    case AttributeKind::integer:
        return isDecimal(text);
    case AttributeKind::note:
        return Note::fromName(text).isSet();
    case AttributeKind::optionalNote:
        return text.empty() || Note::fromName(text).isSet();
    case AttributeKind::pitch:
        return text.empty() || Note::fromPitchName(text).isSet();
    case AttributeKind::relativeFixed:
        return trimmed(text).empty() || isDecimal(text);
    case AttributeKind::fraction:
        return isFraction(text);
    case AttributeKind::word:
        return format.placeOfWord(text).has_value();
    case AttributeKind::select:
        return format.placeOfWord(text).has_value() || isDecimal(text);
    case AttributeKind::cell:
        return isPair(text, ',');
    case AttributeKind::selectControl:
        return format.placeOfWord(text).has_value() || isPair(text, ',');
    case AttributeKind::midiEvent:
        return isMidiEvent(text);
    case AttributeKind::key:
        return isKeyName(text);
    case AttributeKind::translationValue:
        return isTranslationValue(text, format);
    case AttributeKind::translationCondition:
        return isTranslationCondition(text);
    case AttributeKind::text:
        return true;
    }
    return false;
}

bool isNumeric(AttributeKind kind, std::string_view text) {
    return kind == AttributeKind::integer || kind == AttributeKind::relativeFixed || kind == AttributeKind::select ||
           (kind == AttributeKind::translationValue && isDecimal(text));
}

std::string rangeOf(const AttributeFormat& format) {
    const auto hasMinimum = format.minimum != AttributeFormat::NO_MINIMUM;
    const auto hasMaximum = format.maximum != AttributeFormat::NO_MAXIMUM;
    if (!hasMinimum && !hasMaximum) {
        return {};
    }
    if (!hasMaximum) {
        return std::to_string(format.minimum) + " or more";
    }
    return hasMinimum ? std::to_string(format.minimum) + ".." + std::to_string(format.maximum)
                      : std::to_string(format.maximum) + " or less";
}

} // namespace

std::optional<std::string> AttributeFormat::faultOf(std::string_view value) const {
    if (value == defaultText) {
        return std::nullopt;
    }
    if (!hasRightForm(value, *this)) {
        return quoted(value) + " is not " + describeValues();
    }
    const auto number = isNumeric(kind, value) ? readDecimal(value) : std::nullopt;
    if (number && (*number < minimum || *number > maximum)) {
        return quoted(value) + " is not in the range " + rangeOf(*this);
    }
    return std::nullopt;
}

std::string AttributeFormat::normalised(std::string_view value) const {
    const std::string_view text = hasRightForm(value, *this) ? value : defaultText;
    switch (kind) {
    case AttributeKind::integer:
        return std::to_string(readDecimal(text).value_or(0));
    case AttributeKind::word:
        return std::string(words[static_cast<std::size_t>(placeOfWord(text).value_or(0))]);
    case AttributeKind::cell:
        return Cell::fromText(text).toXmlString();
    case AttributeKind::midiEvent:
        return Backend::MidiEngine::MidiMessage(text).toXmlString();
    case AttributeKind::key:
        return Key(text).getName();
    default:
        return std::string(text);
    }
}

std::optional<std::int32_t> AttributeFormat::placeOfWord(std::string_view value) const noexcept {
    const auto found = std::find_if(words.begin(), words.end(), [&](std::string_view word) {
        return anyCase ? equalInAnyCase(value, word) : value == word;
    });
    return found == words.end() ? std::nullopt : std::optional(static_cast<std::int32_t>(found - words.begin()));
}

std::string AttributeFormat::describeValues() const {
    const auto range = rangeOf(*this);
    const auto ranged = [&](const std::string& what) { return range.empty() ? what : what + " (" + range + ")"; };
    switch (kind) {
    case AttributeKind::boolean:
        return "\"true\" or \"false\"";
    case AttributeKind::integer:
        return ranged("a number");
    case AttributeKind::note:
        return "a note from C-1 to G9";
    case AttributeKind::optionalNote:
        return "a note from C-1 to G9 or empty";
    case AttributeKind::pitch:
        return "a pitch from C to B or empty";
    case AttributeKind::relativeFixed:
        return ranged("a number, with a sign for a step, or empty");
    case AttributeKind::fraction:
        return "a fraction like 3_4";
    case AttributeKind::word:
        return "one of " + joined(words);
    case AttributeKind::select:
        return "one of " + joined(words) + " or " + ranged("a number");
    case AttributeKind::cell:
        return "a cell like 2,0";
    case AttributeKind::selectControl:
        return "one of " + joined(words) + " or a cell like 2,0";
    case AttributeKind::midiEvent:
        return "a MIDI event like Controller Change,7";
    case AttributeKind::key:
        return "a key like Shift F1";
    case AttributeKind::translationValue:
        return (words.empty() ? "" : "one of " + joined(words) + " or ") + ranged("a number") +
               " or a data byte like D1 +12";
    case AttributeKind::translationCondition:
        return "Off or a condition like D2 gt 63";
    case AttributeKind::text:
        break;
    }
    return presetFolder.empty() ? "any text" : "the name of a file in \"" + std::string(presetFolder) + "\" or empty";
}

AttributeFormat AttributeFormat::booleanOf(std::string_view name, bool defaultValue, std::string_view meaning) {
    return of(AttributeKind::boolean, name, defaultValue ? "true" : "false", meaning);
}

AttributeFormat AttributeFormat::integerOf(std::string_view name, std::string_view defaultText, std::int32_t minimum,
                                           std::int32_t maximum, std::string_view meaning) {
    auto format = of(AttributeKind::integer, name, defaultText, meaning);
    format.minimum = minimum;
    format.maximum = maximum;
    return format;
}

AttributeFormat AttributeFormat::wordOf(std::string_view name, std::vector<std::string_view> words,
                                        std::string_view defaultWord, std::string_view meaning) {
    auto format = of(AttributeKind::word, name, defaultWord, meaning);
    format.words = std::move(words);
    return format;
}

AttributeFormat AttributeFormat::presetOf(std::string_view name, std::string_view folder, std::string_view meaning) {
    auto format = of(AttributeKind::text, name, "", meaning);
    format.presetFolder = folder;
    return format;
}

AttributeFormat AttributeFormat::of(AttributeKind kind, std::string_view name, std::string_view defaultText,
                                    std::string_view meaning) {
    AttributeFormat format;
    format.name = name;
    format.kind = kind;
    format.defaultText = defaultText;
    format.meaning = meaning;
    return format;
}
