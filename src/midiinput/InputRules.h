// What is done with an incoming message.
#pragma once

#include "midiinput/InputSteps.h"

#include <optional>

namespace Backend::MidiInput {

// A message runs the translations that are configured for it and whose condition holds, in order; one with none
// goes on. Nothing happens here: `tried` is handed each of them, to execute it, `goOn` the message as it goes on.
template <typename OnTried, typename OnGoOn>
void applyRules(const LookUp& lookUp, const MidiEngine::QelMidiMessage& incoming, OnTried tried, OnGoOn goOn) {
    if (lookUp.configuration == nullptr || lookUp.configuration->translations.empty()) {
        MidiEngine::QelMidiMessage message = incoming;
        message.setDefaultChannel(true);
        goOn(message);
        return;
    }
    for (const auto& translation : lookUp.configuration->translations) {
        if (translation) { // else there is none of that name
            const bool holds = translation->getCondition().holdsFor(incoming.getMidiMessage());
            tried(InputSteps::Tried{translation.get(), holds,
                                    holds ? translation->getMidiMessage(incoming) : std::nullopt});
        }
    }
}

} // namespace Backend::MidiInput
