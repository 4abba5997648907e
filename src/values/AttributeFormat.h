// What an attribute of an XML element holds, described once for reading, checking and documentation.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum class AttributeKind {
    boolean,              // "true" or "false"
    integer,              // decimal, between minimum and maximum
    note,                 // "C4"
    optionalNote,         // "C4" or empty
    pitch,                // "C#" or empty
    relativeFixed,        // "+1", "-1", "64" or empty, the number between minimum and maximum
    fraction,             // "3_4"
    word,                 // one of the words
    select,               // one of the words or an index
    cell,                 // "2,0"
    selectControl,        // one of the words or a cell
    midiEvent,            // "Controller Change,7"
    key,                  // "Shift F1"
    translationValue,     // "D1", "D2 -5", one of the words, or as relativeFixed
    translationCondition, // "Off", "D2 gt 63"
    text,                 // anything
};

// All texts in it are literals, or live as long as the program.
struct AttributeFormat {
    static constexpr std::int32_t NO_MINIMUM = std::numeric_limits<std::int32_t>::min();
    static constexpr std::int32_t NO_MAXIMUM = std::numeric_limits<std::int32_t>::max();

    std::string_view name;
    AttributeKind kind = AttributeKind::text;
    std::string_view defaultText; // what an absent or unreadable attribute means
    std::string_view meaning;     // one line
    std::int32_t minimum = NO_MINIMUM;
    std::int32_t maximum = NO_MAXIMUM;
    bool clamped = false;                // numbers out of range are read as the nearest in range, else as they are
    std::vector<std::string_view> words; // in the order of their numbers
    bool anyCase = false;                // of words
    std::string_view presetFolder = {};  // of a text: it names a preset in that folder, or none when it is empty

    // What is wrong with a text, for a person; nothing when it is fine, as the default always is.
    [[nodiscard]] std::optional<std::string> faultOf(std::string_view value) const;
    // The same text for all texts that are read as the same value. Of what has a fault: any.
    [[nodiscard]] std::string normalised(std::string_view value) const;
    // The place of a text in the list of words, nothing when it is none of them.
    [[nodiscard]] std::optional<std::int32_t> placeOfWord(std::string_view value) const noexcept;
    // What the attribute may hold, for a person: "true or false", "0..127".
    [[nodiscard]] std::string describeValues() const;

    [[nodiscard]] static AttributeFormat booleanOf(std::string_view name, bool defaultValue, std::string_view meaning);
    [[nodiscard]] static AttributeFormat integerOf(std::string_view name, std::string_view defaultText,
                                                   std::int32_t minimum, std::int32_t maximum,
                                                   std::string_view meaning);
    [[nodiscard]] static AttributeFormat wordOf(std::string_view name, std::vector<std::string_view> words,
                                                std::string_view defaultWord, std::string_view meaning);
    // The name of a preset.
    [[nodiscard]] static AttributeFormat presetOf(std::string_view name, std::string_view folder,
                                                  std::string_view meaning);
    // Any other kind.
    [[nodiscard]] static AttributeFormat of(AttributeKind kind, std::string_view name, std::string_view defaultText,
                                            std::string_view meaning);
};
