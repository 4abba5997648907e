#include "backend/MidiInputSection.h"

#include <utility>

namespace Backend {

namespace {
using MidiEngine::MessageType;
using MidiEngine::QelMidiMessage;

constexpr std::int8_t releaseVelocity = 100;
} // namespace

std::optional<QelMidiMessage> MidiInputSection::accept(const QelMidiMessage& message) {
    if (!ports_.isInputEnabled(message.getInput())) {
        return std::nullopt;
    }
    if (message.getMessageType() == MessageType::systemExclusive) {
        ++droppedSysEx_;
        return std::nullopt;
    }
    QelMidiMessage accepted = message;
    if (accepted.isNoteOn() && accepted.getD2() == 0) {
        accepted.setToNoteOff();
        accepted.setD2(releaseVelocity);
    }
    accepted.setDefaultChannel(true);
    return accepted;
}

void MidiInputSection::process(const QelMidiMessage& message) {
    if (const std::optional<QelMidiMessage> accepted = accept(message)) {
        engine_.postPlayMidi(*accepted);
    }
}

void MidiInputSection::process(const std::vector<QelMidiMessage>& messages) {
    std::vector<QelMidiMessage> accepted;
    accepted.reserve(messages.size());
    for (const QelMidiMessage& message : messages) {
        if (const std::optional<QelMidiMessage> one = accept(message)) {
            accepted.push_back(*one);
        }
    }
    if (!accepted.empty()) {
        engine_.postPlayMidi(std::move(accepted));
    }
}

} // namespace Backend
