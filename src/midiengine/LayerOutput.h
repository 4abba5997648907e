// What a layer needs of the engine it plays into.
#pragma once

#include "midiengine/SoundingNotes.h"
#include "values/QelMidiMessage.h"

namespace Backend::MidiEngine {

// [clock, under the engine lock]
class LayerOutput {
public:
    // The output that -1 stands for.
    [[nodiscard]] virtual std::int8_t defaultOutput() const = 0;
    [[nodiscard]] virtual bool canSendTo(std::int8_t output) const = 0;
    // The final send of a message whose output and channel are settled. `beginning` is what is known of the Note On
    // that a Note Off ends; where that was sent, its end goes out whatever thru says. True when the message was sent.
    virtual bool sendFromLayer(const QelMidiMessage& message, bool keepHeldNotes, Beginning beginning) = 0;
    // A message that is no note passes: controls bound to it may follow.
    virtual void followControl(const QelMidiMessage& message) = 0;

protected:
    ~LayerOutput() = default;
};

} // namespace Backend::MidiEngine
