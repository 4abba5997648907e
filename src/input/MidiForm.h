// The settings of the functions that send MIDI.
#pragma once

#include "input/Action.h"
#include "input/FunctionSettingsTypes.h"
#include "input/MidiEventIdentity.h"
#include "platform/XmlDocument.h"
#include "values/AttributeFormat.h"
#include "values/XmlWriter.h"

#include <vector>

namespace Backend::MidiEngine {
class QelMidiMessage;
}

namespace Backend::FunctionManagement {

// Attributes: "zone", "output", "channel" (of channel messages), each only when it is set; then the message's data.
// Numbers beyond their range read as the nearest in it, but for zones and outputs beyond 0..254, which are not set.
// Notes are names; numbers are read too.
struct MidiForm {
    using Settings = MidiSettingsType;

    [[nodiscard]] static std::vector<AttributeFormat> attributes(const Actions::SendMidi& call);
    static void read(const Actions::SendMidi& call, const Platform::XmlElement& element, Settings& settings);
    static void write(const Actions::SendMidi& call, const Settings& settings, XmlWriter& xml);
    [[nodiscard]] static bool equal(const Settings& a, const Settings& b);
    static void perform(const Actions::SendMidi& call, const Settings& settings, QelIF& qel);
    [[nodiscard]] static MidiEventIdentity midiEvent(const Actions::SendMidi& call, const Settings& settings);
    // The message as it is sent.
    [[nodiscard]] static MidiEngine::QelMidiMessage message(const Actions::SendMidi& call, const Settings& settings);
};

} // namespace Backend::FunctionManagement
