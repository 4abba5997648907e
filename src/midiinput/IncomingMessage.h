// How an incoming message is taken.
#pragma once

#include "platform/ThreadMessages.h"
#include "values/QelMidiMessage.h"

#include <cstdint>

namespace Backend::MidiInput {

// Posted to the thread that shows incoming messages. wParam: a heap copy of the QelMidiMessage, which it takes.
inline constexpr std::uint32_t showIncomingMessage = Platform::applicationMessage + 105;

// A Note On with velocity 0 is a Note Off with velocity 100; look-up, conditions and translations see it so.
[[nodiscard]] inline MidiEngine::QelMidiMessage asHandled(MidiEngine::QelMidiMessage message) noexcept {
    constexpr std::int8_t releaseVelocity = 100;
    if (message.isNoteOn() && message.getD2() == 0) {
        message.setToNoteOff();
        message.setD2(releaseVelocity);
    }
    return message;
}

} // namespace Backend::MidiInput
