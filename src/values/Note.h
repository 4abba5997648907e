// A note number and its names.
#pragma once

#include "values/XmlItem.h"

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

// 0..127, or negative: no note. As a pitch class (the key of a layer) 0..11.
class Note final : public XmlItem {
public:
    static constexpr std::int8_t NO_NOTE = -1;

    Note() = default;
    explicit Note(int number) : number_(static_cast<std::int8_t>(number)) {}

    // "C-1" (0) to "G9" (127), sharps with "#", exactly so; any other text is no note.
    [[nodiscard]] static Note fromName(std::string_view name);
    // "C" (0) to "B" (11); an octave behind it is ignored; any other text is no note.
    [[nodiscard]] static Note fromPitchName(std::string_view name);

    [[nodiscard]] std::int8_t getNumber() const noexcept { return number_; }
    [[nodiscard]] bool isSet() const noexcept { return number_ >= 0; }

    // The name with its octave, empty for no note.
    [[nodiscard]] std::string getName() const;
    // The name without its octave, empty for no note.
    [[nodiscard]] std::string getPitchName() const;
    [[nodiscard]] std::string toXmlString() const override { return getName(); }

    friend bool operator==(const Note& a, const Note& b) noexcept { return a.number_ == b.number_; }
    friend std::strong_ordering operator<=>(const Note& a, const Note& b) noexcept { return a.number_ <=> b.number_; }

private:
    std::int8_t number_ = NO_NOTE;
};
