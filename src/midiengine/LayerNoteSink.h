// Where the notes of a layer's arpeggio and sequence go: the engine's final send, on the present tick.
#pragma once

#include "generators/NoteSink.h"
#include "midiengine/LayerOutput.h"

#include <optional>

namespace Backend::MidiEngine {

// Each note ends with a Note Off of its own, whoever else holds the same note. Lives as long as one event or tick.
class LayerNoteSink final : public SequenceManagement::NoteSink {
public:
    // For what is played because of the tick.
    LayerNoteSink(LayerOutput& engine, Ticks now) : engine_(engine), now_(now) {}
    // For what is played at once because of an event.
    LayerNoteSink(LayerOutput& engine, const QelMidiMessage& event)
        : engine_(engine), now_(event.getPpq()), eventTime_(event.getHostTime()) {}

    [[nodiscard]] SequenceManagement::NoteBegun begin(const QelMidiMessage& noteOn) override {
        using SequenceManagement::NoteBegun;
        if (!engine_.canSendTo(noteOn.getOutput())) {
            return NoteBegun::nowhere;
        }
        return send(noteOn, Beginning::unknown) ? NoteBegun::heard : NoteBegun::unheard;
    }
    void end(const QelMidiMessage& noteOff, SequenceManagement::NoteBegun begun) override {
        if (begun == SequenceManagement::NoteBegun::heard) {
            send(noteOff, Beginning::heard);
        } else {
            engine_.endUnheard(noteOff);
        }
    }

private:
    bool send(QelMidiMessage message, Beginning beginning) {
        message.setPpq(now_);
        message.setHostTime(eventTime_ ? *eventTime_ : engine_.hostTimeOfTick());
        return engine_.sendFromLayer(message, false, beginning);
    }

    LayerOutput& engine_;
    Ticks now_;
    std::optional<std::int64_t> eventTime_;
};

} // namespace Backend::MidiEngine
