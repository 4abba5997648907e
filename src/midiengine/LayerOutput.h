// What a layer needs of the engine it plays into.
#pragma once

#include "midiengine/SoundingNotes.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace Backend::MidiEngine {

// [clock, under the engine lock]
class LayerOutput {
public:
    // The output that -1 stands for.
    [[nodiscard]] std::int8_t defaultOutput() const { return defaultOutput_; }
    // Whether there is such an output and it is open.
    [[nodiscard]] bool canSendTo(std::int8_t output) const {
        return output >= 0 && open_[static_cast<std::size_t>(output)];
    }
    // The final send of a message whose output and channel are settled. `beginning` is what is known of the Note On
    // that a Note Off ends; where that was sent, its end goes out whatever thru says. True when the message was sent.
    virtual bool sendFromLayer(const QelMidiMessage& message, bool keepHeldNotes, Beginning beginning) = 0;
    // The end of a note that was counted but not sent: neither is its end. Output, channel and note are settled.
    virtual void endUnheard(const QelMidiMessage& noteOff) = 0;
    // A message that is no note passes: controls bound to it may follow.
    virtual void followControl(const QelMidiMessage& message) = 0;

    // The place of the layer that sends at present; -1: none does.
    [[nodiscard]] std::int16_t sendingLayer() const { return sendingLayer_; }
    void setSendingLayer(std::int16_t place) { sendingLayer_ = place; }

    // The tick at which the running arpeggios and sequences began; noTicks while none runs.
    [[nodiscard]] Ticks startTime() const { return startTime_; }
    // The first of them begins now, with a message of that host time (-1: none).
    virtual void beginTime(Ticks now, std::int64_t hostTime) = 0;
    // The host time of what is played because of the present tick; -1: none.
    [[nodiscard]] virtual std::int64_t hostTimeOfTick() = 0;

protected:
    ~LayerOutput() = default;
    void setStartTime(Ticks time) { startTime_ = time; }
    void setDefaultOutput(std::int8_t output) { defaultOutput_ = output; }
    // 0..127.
    void setCanSendTo(std::size_t output, bool open) { open_[output] = open; }

private:
    Ticks startTime_ = noTicks;
    std::int8_t defaultOutput_ = 0;
    std::int16_t sendingLayer_ = -1;
    std::array<bool, 128> open_{}; // asked for each note of each layer
};

} // namespace Backend::MidiEngine
