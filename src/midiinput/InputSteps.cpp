#include "midiinput/InputSteps.h"

#include "midiinput/IncomingMessage.h"

namespace Backend::MidiInput {

InputSteps rehearse(const MidiEventConfigurationMap& map, const MidiEngine::QelMidiMessage& message) {
    InputSteps steps;
    steps.incoming = asHandled(message);
    steps.lookUp = map.lookUp(steps.incoming);
    if (steps.lookUp.configuration == nullptr || steps.lookUp.configuration->translations.empty()) {
        steps.passedOn = steps.incoming;
        steps.passedOn->setDefaultChannel(true);
        return steps;
    }
    for (const auto& translation : steps.lookUp.configuration->translations) {
        if (translation) {
            const bool holds = translation->getCondition().holdsFor(steps.incoming.getMidiMessage());
            steps.tried.push_back(
                {translation.get(), holds, holds ? translation->getMidiMessage(steps.incoming) : std::nullopt});
        }
    }
    return steps;
}

std::string_view nameOf(Found found) {
    switch (found) {
    case Found::ofInputAndChannel:
        return "its input and channel";
    case Found::ofInput:
        return "its input on any channel";
    case Found::ofChannel:
        return "its channel of any input";
    case Found::ofAny:
        return "any input and channel";
    case Found::nothing:
        break;
    }
    return {};
}

} // namespace Backend::MidiInput
