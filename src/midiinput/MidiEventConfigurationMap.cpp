#include "midiinput/MidiEventConfigurationMap.h"

#include "midiinput/IncomingMessage.h"

namespace Backend::MidiInput {

LookUp MidiEventConfigurationMap::lookUp(const MidiEngine::QelMidiMessage& message) const {
    if (empty()) {
        return {};
    }
    const auto input = static_cast<std::uint8_t>(message.getInput());
    const auto channel = static_cast<std::uint8_t>(message.getChannel());
    MidiEvent event{input, channel, message.getMidiMessage()};
    const auto look = [&](std::uint8_t ofInput, std::uint8_t ofChannel) {
        event.input = ofInput;
        event.channel = ofChannel;
        return find(event);
    };
    if (const auto* configuration = look(input, channel)) {
        return {Found::ofInputAndChannel, configuration};
    }
    if (const auto* configuration = look(input, MidiEvent::ANY)) {
        return {Found::ofInput, configuration};
    }
    if (const auto* configuration = look(MidiEvent::ANY, channel)) {
        return {Found::ofChannel, configuration};
    }
    if (const auto* configuration = look(MidiEvent::ANY, MidiEvent::ANY)) {
        return {Found::ofAny, configuration};
    }
    return {};
}

bool MidiEventConfigurationMap::onlyPlays(const MidiEngine::QelMidiMessage& message) const {
    const LookUp found = lookUp(asHandled(message));
    return found.configuration == nullptr || found.configuration->onlyPlays();
}

} // namespace Backend::MidiInput
