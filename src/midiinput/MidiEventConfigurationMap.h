// What all incoming MIDI messages do.
#pragma once

#include "input/ElementCollection.h"
#include "midiinput/MidiEvent.h"
#include "midiinput/MidiEventConfiguration.h"
#include "values/QelMidiMessage.h"

#include <string>

namespace Backend::MidiInput {

// Which look-up found a configuration, in the order in which they are tried.
enum class Found { ofInputAndChannel, ofInput, ofChannel, ofAny, nothing };

struct LookUp {
    Found found = Found::nothing;
    const MidiEventConfiguration* configuration = nullptr; // null: nothing was found
};

// Copies are deep.
struct MidiEventConfigurationMap : Component::ElementCollection<MidiEvent, MidiEventConfiguration> {
    // The configuration that is in force for a message: that of its input and channel, else of its input and any
    // channel, else of any input and its channel, else of any. Costs the same however many there are.
    [[nodiscard]] LookUp lookUp(const MidiEngine::QelMidiMessage& message) const;
    // Handling the message plays, and changes nothing in the program.
    [[nodiscard]] bool onlyPlays(const MidiEngine::QelMidiMessage& message) const;

    // The preset that the section was last loaded from or saved as; may be empty.
    std::string presetName;
};

} // namespace Backend::MidiInput
