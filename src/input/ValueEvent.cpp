#include "input/ValueEvent.h"

#include <algorithm>

namespace Backend {

using MidiEngine::MessageType;
using MidiEngine::MidiMessage;
using MidiEngine::QelMidiMessage;

namespace {

enum class Place { nowhere, first, second, both };

Place placeOfValue(MessageType type) noexcept {
    switch (type) {
    case MessageType::noteOff:
    case MessageType::noteOn:
    case MessageType::keyPressure:
    case MessageType::controllerChange:
        return Place::second;
    case MessageType::pitchBend:
    case MessageType::songPosition:
        return Place::both;
    case MessageType::programChange:
    case MessageType::channelPressure:
    case MessageType::songSelect:
    case MessageType::unofficialBusSelect:
        return Place::first;
    default:
        return Place::nowhere;
    }
}

bool isSystemMessage(MessageType type) noexcept {
    return static_cast<std::int32_t>(type) >= 0xF0;
}

constexpr std::int32_t low7 = 0x7F;

} // namespace

bool ValueEvent::canBeSent() const noexcept {
    return message.isValid() && message.getMessageType() != MessageType::systemExclusive;
}

std::int32_t ValueEvent::greatestValue() const noexcept {
    switch (placeOfValue(message.getMessageType())) {
    case Place::nowhere:
        return 0;
    case Place::both:
        return 16383;
    default:
        return 127;
    }
}

QelMidiMessage ValueEvent::withValue(std::int32_t value, const Cell& fromControl) const noexcept {
    value = std::clamp(value, 0, greatestValue());
    MidiMessage filled = message;
    switch (placeOfValue(message.getMessageType())) {
    case Place::nowhere:
        break;
    case Place::first:
        filled.setD1(static_cast<std::int8_t>(value));
        break;
    case Place::second:
        filled.setD2(static_cast<std::int8_t>(value));
        break;
    case Place::both:
        filled.setD1(static_cast<std::int8_t>(value & low7));
        filled.setD2(static_cast<std::int8_t>(value >> 7));
        break;
    }
    const bool hasChannel = !isSystemMessage(message.getMessageType());
    return {filled, output, hasChannel ? channel : QelMidiMessage::DEFAULT_CHANNEL, zone, fromControl};
}

bool ValueEvent::matches(const QelMidiMessage& other) const noexcept {
    const bool sameChannel = channel < 0 || isSystemMessage(message.getMessageType()) ||
                             (!other.isDefaultChannel() && other.getChannel() == channel);
    return sameChannel && (output < 0 || other.getOutput() == output) &&
           eventIdentity(message) == eventIdentity(other.getMidiMessage());
}

std::int32_t ValueEvent::valueIn(const QelMidiMessage& other) const noexcept {
    switch (placeOfValue(message.getMessageType())) {
    case Place::first:
        return other.getD1();
    case Place::second:
        return other.getD2();
    case Place::both:
        return (other.getD1() & low7) | (other.getD2() & low7) << 7;
    case Place::nowhere:
        break;
    }
    return 0;
}

std::uint32_t eventIdentity(const MidiMessage& message) noexcept {
    const MessageType type = message.getMessageType();
    const bool byFirst = placeOfValue(type) == Place::second;
    return static_cast<std::uint32_t>(type) << 8 | (byFirst ? static_cast<std::uint8_t>(message.getD1()) : 0U);
}

} // namespace Backend
