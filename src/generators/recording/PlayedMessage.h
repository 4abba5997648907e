// A message on its way to the record.
#pragma once

#include "values/MessageType.h"
#include "values/QelMidiMessage.h"

#include <cstdint>

namespace Backend::Recording {

// Eight bytes, made on the clock thread: what a port sends of the message, and when.
struct PlayedMessage {
    std::uint32_t milliseconds = 0; // of a clock that wraps
    std::uint32_t wire = 0;         // from the lowest byte: status with channel, data; how many bytes count

    [[nodiscard]] static PlayedMessage of(const MidiEngine::QelMidiMessage& message,
                                          std::uint32_t milliseconds) noexcept {
        const auto size = static_cast<std::uint32_t>(message.getMidiMessage().getMessageSize()) + 1;
        return {milliseconds, message.getMidiOutShortMsg() | size << 24};
    }
    [[nodiscard]] std::uint8_t status() const noexcept { return static_cast<std::uint8_t>(wire); }
    [[nodiscard]] std::uint32_t size() const noexcept { return wire >> 24; }
};

// Whether a message of this status can stand in a buffer. System Reset never does, deliberately; system exclusive
// messages are not played, and what has no name is no message.
[[nodiscard]] inline bool isRecordable(std::uint8_t status) noexcept {
    using MidiEngine::MessageType;
    const MessageType type = MidiEngine::fixStatus(static_cast<MessageType>(status));
    return MidiEngine::isKnown(type) && type != MessageType::systemReset && type != MessageType::systemExclusive &&
           type != MessageType::endOfSysex;
}

} // namespace Backend::Recording
