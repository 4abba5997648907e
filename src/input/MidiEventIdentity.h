// Which MIDI event a function or translation sends, whatever its value.
#pragma once

#include "values/MessageType.h"

#include <cstdint>

namespace Backend {

struct MidiEventIdentity {
    static constexpr std::uint8_t NO_NUMBER = 255;

    MidiEngine::MessageType type = MidiEngine::MessageType::none; // none: it sends no MIDI
    std::uint8_t number = NO_NUMBER;                              // the note or controller
    std::int8_t channel = -1;                                     // -1: the default channel
    std::uint8_t output = 255;                                    // 255: the default output
    std::uint8_t zone = 255;                                      // 255: no zone

    [[nodiscard]] bool isEmpty() const { return type == MidiEngine::MessageType::none; }
    [[nodiscard]] bool isNoteOn() const { return type == MidiEngine::MessageType::noteOn && number != NO_NUMBER; }
    [[nodiscard]] bool isNoteOff() const { return type == MidiEngine::MessageType::noteOff && number != NO_NUMBER; }
    // The same event but for its type: a Note Off of that kind ends a Note On of this one.
    [[nodiscard]] bool isSamePlace(const MidiEventIdentity& other) const {
        return number == other.number && channel == other.channel && output == other.output && zone == other.zone;
    }

    friend bool operator==(const MidiEventIdentity&, const MidiEventIdentity&) = default;
};

} // namespace Backend
