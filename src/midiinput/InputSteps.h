// What became of one incoming message, step by step, for whoever wants to know why.
#pragma once

#include "midiinput/MidiEventConfigurationMap.h"
#include "values/QelMidiMessage.h"

#include <optional>
#include <string_view>
#include <vector>

namespace Backend::MidiInput {

// Lives for the call that hands it out.
struct InputSteps {
    struct Tried {
        const TranslationManagement::Translation* translation = nullptr;
        bool conditionHeld = false;                          // it was executed
        std::optional<MidiEngine::QelMidiMessage> message{}; // what it sent
    };

    MidiEngine::QelMidiMessage incoming{};                // as it was handled (asHandled)
    LookUp lookUp{};                                      // with a configuration that lives as long
    std::vector<Tried> tried{};                           // in order
    std::optional<MidiEngine::QelMidiMessage> passedOn{}; // as it went on without a translation
    std::vector<MidiEngine::QelMidiMessage> ended{};      // Note Offs for what the key had started
};

// What would become of a message while no key is held. The configuration and the translations are those of the map.
[[nodiscard]] InputSteps rehearse(const MidiEventConfigurationMap& map, const MidiEngine::QelMidiMessage& message);

// What a look-up goes by: "its input and channel", "any input and channel"; empty for nothing.
[[nodiscard]] std::string_view nameOf(Found found);

} // namespace Backend::MidiInput
