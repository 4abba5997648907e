// The kinds of MIDI messages and what each is called.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Backend::MidiEngine {

// The status byte without the channel. A value without a name here is representable and invalid.
enum class MessageType : std::int32_t {
    none = 0,
    noteOff = 0x80,
    noteOn = 0x90,
    keyPressure = 0xA0,
    controllerChange = 0xB0,
    programChange = 0xC0,
    channelPressure = 0xD0,
    pitchBend = 0xE0,
    systemExclusive = 0xF0,
    songPosition = 0xF2,
    songSelect = 0xF3,
    unofficialBusSelect = 0xF5, // not in MIDI 1.0; an ordinary message of one data byte, deliberately
    tuneRequest = 0xF6,
    endOfSysex = 0xF7,
    timingTick = 0xF8,
    startSong = 0xFA,
    continueSong = 0xFB,
    stopSong = 0xFC,
    activeSensing = 0xFE,
    systemReset = 0xFF,
};

// A type from a status: below 0xF0 the channel is dropped, from 0xF0 on the value is kept whole.
[[nodiscard]] constexpr MessageType fixStatus(MessageType status) noexcept {
    const auto value = static_cast<std::int32_t>(status);
    return value < 0xF0 ? static_cast<MessageType>(value & 0xF0) : status;
}

// How many data bytes follow the status: 0, 1 or 2; 0 for an invalid type.
[[nodiscard]] constexpr int dataByteCount(MessageType type) noexcept {
    switch (type) {
    case MessageType::noteOff:
    case MessageType::noteOn:
    case MessageType::keyPressure:
    case MessageType::controllerChange:
    case MessageType::pitchBend:
    case MessageType::systemExclusive:
    case MessageType::songPosition:
        return 2;
    case MessageType::programChange:
    case MessageType::channelPressure:
    case MessageType::songSelect:
    case MessageType::unofficialBusSelect:
        return 1;
    default:
        return 0;
    }
}

// One of the types that have a name.
[[nodiscard]] bool isKnown(MessageType type) noexcept;
// The name in files and on screen, "Unknown" for an invalid type.
[[nodiscard]] const std::string& eventName(MessageType type);
// The type of exactly that name, none for any other text.
[[nodiscard]] MessageType messageTypeFromName(std::string_view name) noexcept;

} // namespace Backend::MidiEngine
