// The arpeggio and the sequence of a layer at work.
#pragma once

#include "generators/SequencePlayer.h"
#include "midiengine/Arpeggio.h"
#include "midiengine/Layer.h"
#include "midiengine/LayerOutput.h"

#include <memory>

namespace Backend::MidiEngine {

// An arpeggio plays the notes on its beats, each through the current step of the sequence if there is one. Without an
// arpeggio each note begins at once with the current step, which pulse() moves on. [clock, under the engine lock]
class LayerMachine final {
public:
    using Voice = SequenceManagement::SequencePlayer::Voice;

    // Null for a layer without both.
    [[nodiscard]] static std::unique_ptr<LayerMachine> of(const Layers::Layer& layer);

    [[nodiscard]] bool hasArpeggio() const { return arpeggio_ != nullptr; }

    // A note that the layer would send; the voice is for its end.
    [[nodiscard]] Voice noteOn(const QelMidiMessage& message, LayerOutput& engine);
    void noteOff(const QelMidiMessage& message, Voice voice, LayerOutput& engine);
    // One tick, behind its events.
    void advance(Ticks now, LayerOutput& engine);
    // The next step, without an arpeggio.
    void pulse();
    // Something is held by the arpeggio or sounds.
    [[nodiscard]] bool isRunning() const { return steps_.isSounding() || (arpeggio_ && arpeggio_->isRunning()); }

    // Forgets all notes; they are ended elsewhere.
    void reset();
    // The same, but what is held next goes on where this stopped.
    void pause();
    // Goes on where the other was paused, if it is set up alike.
    void continueFrom(const LayerMachine& other);
    // Back to the first step; while nothing runs.
    void rewind() { steps_.setStep(0); }
    // An output is closed: nothing of ours sounds there.
    void forgetOutput(std::int8_t output);

private:
    explicit LayerMachine(const Layers::Layer& layer);
    void rewindUnlessRunning();

    std::unique_ptr<ArpeggioManagement::Arpeggio> arpeggio_; // null: none
    SequenceManagement::SequenceSetting sequence_;
    SequenceManagement::SequencePlayer steps_;
    Voice lastVoice_ = 0;
};

} // namespace Backend::MidiEngine
