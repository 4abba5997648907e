#include "midiinput/InputSteps.h"

#include "midiinput/IncomingMessage.h"
#include "midiinput/InputRules.h"

namespace Backend::MidiInput {

InputSteps rehearse(const MidiEventConfigurationMap& map, const MidiEngine::QelMidiMessage& message) {
    InputSteps steps;
    steps.incoming = asHandled(message);
    steps.lookUp = map.lookUp(steps.incoming);
    applyRules(
        steps.lookUp, steps.incoming, [&](const InputSteps::Tried& tried) { steps.tried.push_back(tried); },
        [&](const MidiEngine::QelMidiMessage& passedOn) { steps.passedOn = passedOn; });
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
