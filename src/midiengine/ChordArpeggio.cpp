#include "midiengine/ChordArpeggio.h"

namespace Backend::ArpeggioManagement::Arpeggios {

using MidiEngine::QelMidiMessage;
using SequenceManagement::NoteSink;
using SequenceManagement::SequencePlayer;

namespace {
// Two hands on several keyboards; more need room to be made, once.
constexpr std::size_t usualNotes = 128;
} // namespace

ChordArpeggio::ChordArpeggio(const ArpeggioSetting& setting) : Arpeggio(setting) {
    held_.reserve(usualNotes);
}

void ChordArpeggio::take(const QelMidiMessage& event, SequencePlayer&) {
    if (event.isNoteOn()) {
        held_.push_back({event, newVoice(), false, false});
        return;
    }
    if (!event.isNoteOff()) {
        return;
    }
    for (ArpeggioNote& note : held_) {
        note.released = note.released || note.noteOn.getD1() == event.getD1();
    }
    std::erase_if(held_, [](const ArpeggioNote& note) { return note.released && !note.playing; });
    if (held_.empty()) {
        reset();
    }
}

void ChordArpeggio::process(const ArpeggioBeat& beat, SequencePlayer& steps, NoteSink& sink) {
    if (held_.empty()) {
        return;
    }
    if (isEndDue(beat)) {
        for (ArpeggioNote& note : held_) {
            if (note.playing) {
                steps.end(note.voice, sink);
                note.playing = false;
            }
        }
        std::erase_if(held_, [](const ArpeggioNote& note) { return note.released; });
        if (held_.empty()) {
            reset();
            return;
        }
    }
    if (!beat.mayStart(setting().beat)) {
        return;
    }
    if (begun_) {
        steps.nextStep();
    }
    beat.start(held_.front().noteOn.getHostTime());
    begun_ = true;
    for (ArpeggioNote& note : held_) {
        if (!note.playing && !note.released) {
            steps.start(note.noteOn, note.voice, beat.now(), sink);
            note.playing = true;
            noteStarted(beat.now());
        }
    }
}

void ChordArpeggio::reset() {
    held_.clear();
    begun_ = false;
    forgetTime();
}

void ChordArpeggio::pause(SequencePlayer&) {
    held_.clear();
    forgetTime();
}

void ChordArpeggio::continueFrom(const Arpeggio& other) {
    begun_ = static_cast<const ChordArpeggio&>(other).begun_;
}

void ChordArpeggio::forgetOutput(std::int8_t output, SequencePlayer&) {
    std::erase_if(held_, [output](const ArpeggioNote& note) { return note.noteOn.getOutput() == output; });
    if (held_.empty()) {
        reset();
    }
}

} // namespace Backend::ArpeggioManagement::Arpeggios
