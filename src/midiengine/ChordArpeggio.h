// All held notes together on each beat.
#pragma once

#include "midiengine/Arpeggio.h"
#include "midiengine/ArpeggioNote.h"

#include <vector>

namespace Backend::ArpeggioManagement::Arpeggios {

// The sequence moves on with each beat. A key that is let go while its note sounds ends with the others of its step.
class ChordArpeggio final : public Arpeggio {
public:
    explicit ChordArpeggio(const ArpeggioSetting& setting);

    void take(const MidiEngine::QelMidiMessage& event, SequenceManagement::SequencePlayer& steps) override;
    void process(const ArpeggioBeat& beat, SequenceManagement::SequencePlayer& steps,
                 SequenceManagement::NoteSink& sink) override;
    [[nodiscard]] bool isRunning() const override { return !held_.empty(); }
    void reset() override;
    void pause(SequenceManagement::SequencePlayer& steps) override;
    void continueFrom(const Arpeggio& other) override;
    void forgetOutput(std::int8_t output, SequenceManagement::SequencePlayer& steps) override;

private:
    std::vector<ArpeggioNote> held_; // in press order
    bool begun_ = false;             // the next beat is not the first
};

} // namespace Backend::ArpeggioManagement::Arpeggios
