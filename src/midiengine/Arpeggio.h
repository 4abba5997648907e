// Plays the notes that a layer holds, beat by beat.
#pragma once

#include "generators/SequencePlayer.h"
#include "midiengine/ArpeggioBeat.h"
#include "midiengine/ArpeggioSetting.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <memory>

namespace Backend::ArpeggioManagement {

// Notes come and go by events; they are played tick by tick, through the layer's sequence, whose step the arpeggio
// moves on. It runs while it holds notes. [clock, under the engine lock]
class Arpeggio {
public:
    virtual ~Arpeggio() = default;
    Arpeggio(const Arpeggio&) = delete;
    Arpeggio& operator=(const Arpeggio&) = delete;

    [[nodiscard]] static std::unique_ptr<Arpeggio> create(const ArpeggioSetting& setting);

    // Takes a Note On or a Note Off, its output, channel and note as the layer sends them. Plays nothing.
    virtual void take(const MidiEngine::QelMidiMessage& event, SequenceManagement::SequencePlayer& steps) = 0;
    // Each tick, once, behind its events.
    virtual void process(const ArpeggioBeat& beat, SequenceManagement::SequencePlayer& steps,
                         SequenceManagement::NoteSink& sink) = 0;
    [[nodiscard]] virtual bool isRunning() const = 0;

    // Forgets all notes; those that sound are ended elsewhere.
    virtual void reset() = 0;
    // The same, but what is held next goes on where this stopped.
    virtual void pause(SequenceManagement::SequencePlayer& steps) = 0;
    // Goes on where the other, of the same setting, was paused.
    virtual void continueFrom(const Arpeggio& other) = 0;
    // Gives up what goes to that output; `steps` has forgotten what sounded there, what sounds elsewhere still ends.
    virtual void forgetOutput(std::int8_t output, SequenceManagement::SequencePlayer& steps) = 0;

    [[nodiscard]] const ArpeggioSetting& setting() const { return setting_; }

protected:
    using Voice = SequenceManagement::SequencePlayer::Voice;

    explicit Arpeggio(const ArpeggioSetting& setting) : setting_(setting) {}

    // Notes that sound are to end on this tick.
    [[nodiscard]] bool isEndDue(const ArpeggioBeat& beat);
    void noteStarted(Ticks now) { lastStart_ = now; }
    [[nodiscard]] Voice newVoice() { return ++lastVoice_; }
    void forgetTime() { lastStart_ = noTicks; }

private:
    ArpeggioSetting setting_;
    Ticks lastStart_ = noTicks; // of the last Note On
    Voice lastVoice_ = 0;
};

} // namespace Backend::ArpeggioManagement
