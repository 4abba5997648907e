// What became of one incoming message, step by step, for whoever wants to know why.
#pragma once

#include "midiinput/MidiEventConfigurationMap.h"
#include "values/QelMidiMessage.h"

#include <optional>
#include <vector>

namespace Backend::MidiInput {

// Lives for the call that hands it out.
struct InputSteps {
    struct Tried {
        const TranslationManagement::Translation* translation;
        bool conditionHeld;                                // it was executed
        std::optional<MidiEngine::QelMidiMessage> message; // what it sent
    };

    MidiEngine::QelMidiMessage incoming{};                // as it was handled (asHandled)
    LookUp lookUp{};                                      // with a configuration that lives as long
    std::vector<Tried> tried{};                           // in order
    std::optional<MidiEngine::QelMidiMessage> passedOn{}; // as it went on without a translation
    std::vector<MidiEngine::QelMidiMessage> ended{};      // Note Offs for what the key had started
};

} // namespace Backend::MidiInput
