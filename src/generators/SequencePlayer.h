// Plays notes through the current step of a sequence and remembers what it began.
#pragma once

#include "generators/NoteSink.h"
#include "generators/SequenceSetting.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <cstdint>
#include <vector>

namespace Backend::SequenceManagement {

// Whatever the step is by then, each note that began ends once: with the note that it was begun for, or after its
// step's length. Without a sequence a note begins as it came. [clock, under the engine lock]
class SequencePlayer final {
public:
    // Names one note given to start(), until it is given to end(); chosen by the caller.
    using Voice = std::uint32_t;

    explicit SequencePlayer(SequenceSetting setting);

    // Begins what the current step makes of the Note On; nothing for a rest.
    void start(const MidiEngine::QelMidiMessage& noteOn, Voice voice, Ticks now, NoteSink& sink);
    // Ends all that began for the voice and still sounds, as its Note Ons were.
    void end(Voice voice, NoteSink& sink);
    // The same, with the velocity of the Note Off.
    void end(Voice voice, const MidiEngine::QelMidiMessage& noteOff, NoteSink& sink);
    // Ends what is to end by `now`.
    void advance(Ticks now, NoteSink& sink);

    void nextStep();
    [[nodiscard]] std::size_t step() const { return step_; }
    void setStep(std::size_t step) { step_ = step; }

    [[nodiscard]] bool isSounding() const { return !begun_.empty(); }
    [[nodiscard]] bool isSounding(Voice voice) const;
    // Forgets all that sounds and goes back to the first step; the notes are ended elsewhere.
    void reset();
    // What began on that output is ended elsewhere.
    void forgetOutput(std::int8_t output);

private:
    struct Begun {
        MidiEngine::QelMidiMessage noteOn;
        Voice voice = 0;
        Ticks end = noTicks; // none: with its voice
        std::int32_t velocityOffset = 0;
        NoteBegun how = NoteBegun::heard;
    };
    void begin(const MidiEngine::QelMidiMessage& noteOn, Voice voice, Begun begun, NoteSink& sink);
    template <typename Which, typename Velocity> void endThose(NoteSink& sink, Which which, Velocity velocity);

    SequenceSetting setting_;
    std::size_t step_ = 0; // below the number of steps, or 0
    std::vector<Begun> begun_;
};

} // namespace Backend::SequenceManagement
