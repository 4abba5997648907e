#include "values/Note.h"

#include "values/TextNumbers.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::array<std::string_view, 12> pitchNames{"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};

struct ParsedName {
    int pitch = -1; // negative: the text does not begin with a pitch name
    std::string_view octave;
};

ParsedName parseName(std::string_view name) {
    const auto length = name.substr(1, 1) == "#" ? 2U : 1U;
    for (auto pitch = 0; pitch < 12; ++pitch) {
        if (name.substr(0, length) == pitchNames[static_cast<std::size_t>(pitch)]) {
            return {pitch, name.substr(length)};
        }
    }
    return {};
}

} // namespace

Note Note::fromName(std::string_view name) {
    if (name.empty()) {
        return Note();
    }
    const auto parsed = parseName(name);
    const auto octave = readDecimal(parsed.octave);
    if (parsed.pitch < 0 || !octave || std::to_string(*octave) != parsed.octave) {
        return Note();
    }
    const auto number = (static_cast<std::int64_t>(*octave) + 1) * 12 + parsed.pitch;
    return number >= 0 && number <= 127 ? Note(static_cast<int>(number)) : Note();
}

Note Note::fromPitchName(std::string_view name) {
    if (name.empty()) {
        return Note();
    }
    const auto parsed = parseName(name);
    const auto octave = readDecimal(parsed.octave);
    const auto nothingElseBehind = parsed.octave.empty() || (octave && std::to_string(*octave) == parsed.octave);
    return nothingElseBehind ? Note(parsed.pitch) : Note();
}

std::string Note::getPitchName() const {
    return isSet() ? std::string(pitchNames[static_cast<std::size_t>(number_ % 12)]) : std::string();
}

std::string Note::getName() const {
    return isSet() ? getPitchName() + std::to_string(number_ / 12 - 1) : std::string();
}
