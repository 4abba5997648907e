// The settings of the translations that send MIDI.
#pragma once

#include "input/Action.h"
#include "input/MidiEventIdentity.h"
#include "midiinput/TranslationSettingsTypes.h"
#include "platform/XmlDocument.h"
#include "values/AttributeFormat.h"
#include "values/QelMidiMessage.h"
#include "values/XmlWriter.h"

#include <optional>
#include <vector>

namespace Backend::MidiInput::TranslationManagement {

// Attributes: "zone", "output", "channel", each only when it is set; then "d1" and "d2". A call with the type none
// sends the incoming message's own status.
struct TranslationMidiForm {
    using Settings = MidiSettingsType;

    [[nodiscard]] static std::vector<AttributeFormat> attributes(const Actions::SendMidi& call);
    static void read(const Actions::SendMidi& call, const Platform::XmlElement& element, Settings& settings);
    static void write(const Actions::SendMidi& call, const Settings& settings, XmlWriter& xml);
    static void perform(const Actions::SendMidi& call, const Settings& settings, QelIF& qel,
                        const MidiEngine::QelMidiMessage& incoming);
    // Of a note only when it goes to a zone.
    [[nodiscard]] static MidiEventIdentity midiEvent(const Actions::SendMidi& call, const Settings& settings,
                                                     const MidiEngine::QelMidiMessage& incoming);
    // The message as it is sent; its input and times are those of the incoming one.
    [[nodiscard]] static std::optional<MidiEngine::QelMidiMessage>
    midiMessage(const Actions::SendMidi& call, const Settings& settings, const MidiEngine::QelMidiMessage& incoming);
};

} // namespace Backend::MidiInput::TranslationManagement
