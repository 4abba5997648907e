#include "host/live/MidiBytes.h"

namespace Host {

using Backend::noTicks;
using Backend::Ticks;
using Backend::MidiEngine::dataByteCount;
using Backend::MidiEngine::fixStatus;
using Backend::MidiEngine::isKnown;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

Arrival readMidiBytes(const std::uint8_t* data, std::size_t size, MidiBytes& bytes) noexcept {
    bytes.size = 0;
    if (size == 0) {
        return Arrival::malformed;
    }
    const auto type = fixStatus(static_cast<MessageType>(data[0]));
    if (type == MessageType::systemExclusive || type == MessageType::endOfSysex) {
        return Arrival::sysEx;
    }
    if (!isKnown(type) || size != static_cast<std::size_t>(dataByteCount(type)) + 1) {
        return Arrival::malformed;
    }
    for (std::size_t i = 1; i < size; ++i) {
        if (data[i] > 0x7F) {
            return Arrival::malformed;
        }
    }
    for (std::size_t i = 0; i < size; ++i) {
        bytes.bytes[i] = data[i];
    }
    bytes.size = static_cast<std::uint8_t>(size);
    return Arrival::message;
}

QelMidiMessage toMessage(const MidiBytes& bytes, int input, Ticks ppq, std::int64_t hostTime) noexcept {
    const std::uint8_t status = bytes.bytes[0];
    const auto channel = static_cast<std::int8_t>(status < 0xF0 ? status & 0x0F : 0);
    const auto data = [&bytes](std::size_t i) { return static_cast<std::int8_t>(i < bytes.size ? bytes.bytes[i] : 0); };
    QelMidiMessage message(static_cast<MessageType>(status), data(1), data(2), channel, QelMidiMessage::DEFAULT_OUTPUT,
                           QelMidiMessage::DEFAULT_ZONE, static_cast<std::int8_t>(input), ppq);
    message.setHostTime(hostTime);
    return message;
}

MidiBytes toBytes(const QelMidiMessage& message) noexcept {
    const std::uint32_t packed = message.getMidiOutShortMsg();
    const std::array<std::uint8_t, 3> raw{static_cast<std::uint8_t>(packed), static_cast<std::uint8_t>(packed >> 8),
                                          static_cast<std::uint8_t>(packed >> 16)};
    MidiBytes bytes;
    const auto size = static_cast<std::size_t>(message.getMidiMessage().getMessageSize()) + 1;
    static_cast<void>(readMidiBytes(raw.data(), size, bytes));
    return bytes;
}

} // namespace Host
