// Which incoming messages a configuration is for.
#pragma once

#include "values/MidiMessage.h"

#include <cstddef>
#include <cstdint>
#include <functional>

namespace Backend::MidiInput {

// Equal for equal packed keys: notes and controllers count one by one, of all other messages, Key Pressure among them,
// the data bytes are not looked at.
struct MidiEvent {
    static constexpr std::uint8_t ANY = 255;

    std::uint8_t input = ANY;   // the port
    std::uint8_t channel = ANY; // 0..15
    MidiEngine::MidiMessage message{};

    // From the highest byte: input, channel, status, D1.
    [[nodiscard]] std::uint32_t getPacked() const noexcept {
        using MidiEngine::MessageType;
        const MessageType type = message.getMessageType();
        const bool hasNumber =
            type == MessageType::noteOff || type == MessageType::noteOn || type == MessageType::controllerChange;
        const auto byte = [](std::int32_t value) { return static_cast<std::uint32_t>(value) & 0xFF; };
        return byte(input) << 24 | byte(channel) << 16 | byte(static_cast<std::int32_t>(type)) << 8 |
               (hasNumber ? byte(message.getD1()) : 0);
    }

    friend bool operator==(const MidiEvent& a, const MidiEvent& b) noexcept { return a.getPacked() == b.getPacked(); }
    // By the packed keys as signed numbers.
    friend bool operator<(const MidiEvent& a, const MidiEvent& b) noexcept {
        return static_cast<std::int32_t>(a.getPacked()) < static_cast<std::int32_t>(b.getPacked());
    }
};

} // namespace Backend::MidiInput

template <> struct std::hash<Backend::MidiInput::MidiEvent> {
    std::size_t operator()(const Backend::MidiInput::MidiEvent& event) const noexcept { return event.getPacked(); }
};
