// MIDI messages as the bytes on a wire.
#pragma once

#include "values/QelMidiMessage.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace Host {

// One message of one to three bytes; size 0: none.
struct MidiBytes {
    std::array<std::uint8_t, 3> bytes{};
    std::uint8_t size = 0;
};

enum class Arrival {
    message,   // one whole message of MIDI 1.0, or a bus select (0xF5)
    sysEx,     // system exclusive, or the end of one
    malformed, // incomplete, more than one message, without a status, an undefined status
};

// Looks at what a port delivered in one piece; `bytes` is set for a message only. [any]
[[nodiscard]] Arrival readMidiBytes(const std::uint8_t* data, std::size_t size, MidiBytes& bytes) noexcept;

// The message that arrived as `bytes` on an input. System messages have channel 0. [any]
[[nodiscard]] Backend::MidiEngine::QelMidiMessage toMessage(const MidiBytes& bytes, int input, Backend::Ticks ppq,
                                                            std::int64_t hostTime) noexcept;

// What a port is to send; size 0 for what no port may send: system exclusive and data bytes above 127. [any]
[[nodiscard]] MidiBytes toBytes(const Backend::MidiEngine::QelMidiMessage& message) noexcept;

} // namespace Host
