// A MIDI event that carries a number: the value of a control, the position of a joystick's axis.
#pragma once

#include "values/Cell.h"
#include "values/QelMidiMessage.h"

#include <cstdint>

namespace Backend {

struct ValueEvent {
    MidiEngine::MidiMessage message; // the type, and the first data byte where the number does not stand in it
    std::int8_t output = MidiEngine::QelMidiMessage::DEFAULT_OUTPUT;
    std::int8_t channel = MidiEngine::QelMidiMessage::DEFAULT_CHANNEL; // system messages have none, whatever it says
    std::int8_t zone = MidiEngine::QelMidiMessage::DEFAULT_ZONE;

    // False for an unknown type and for System Exclusive, which nothing here could fill.
    [[nodiscard]] bool canBeSent() const noexcept;
    // The greatest number that it takes: 127, 16383; 0 when it takes none.
    [[nodiscard]] std::int32_t greatestValue() const noexcept;
    // The event with a number, clamped to 0..greatestValue(): in the second data byte of notes, key pressure and
    // controllers; in both, low 7 bits first, of pitch bend and song position; else in the first.
    [[nodiscard]] MidiEngine::QelMidiMessage withValue(std::int32_t value, const Cell& fromControl = {}) const noexcept;

    // True when `other` is this event with whatever number: of the same type and, where that is not the number, with
    // the same first data byte; on the channel and the output that this one names, if it names any.
    [[nodiscard]] bool matches(const MidiEngine::QelMidiMessage& other) const noexcept;
    // The number in a message that matches.
    [[nodiscard]] std::int32_t valueIn(const MidiEngine::QelMidiMessage& message) const noexcept;

    friend bool operator==(const ValueEvent&, const ValueEvent&) = default;
};

// What makes two messages the same event with different numbers: the type, and the first data byte where it is not the
// number.
[[nodiscard]] std::uint32_t eventIdentity(const MidiEngine::MidiMessage& message) noexcept;

} // namespace Backend
