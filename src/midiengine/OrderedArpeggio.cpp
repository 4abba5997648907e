#include "midiengine/OrderedArpeggio.h"

#include <algorithm>

namespace Backend::ArpeggioManagement::Arpeggios {

using MidiEngine::QelMidiMessage;
using SequenceManagement::NoteSink;
using SequenceManagement::SequencePlayer;

namespace {
constexpr std::size_t allNotes = 128;
} // namespace

OrderedArpeggio::OrderedArpeggio(const ArpeggioSetting& setting) : Arpeggio(setting) {
    held_.reserve(allNotes);
}

std::vector<ArpeggioNote>::iterator OrderedArpeggio::find(std::int8_t note) {
    return std::lower_bound(held_.begin(), held_.end(), note,
                            [](const ArpeggioNote& held, std::int8_t wanted) { return held.noteOn.getD1() < wanted; });
}

void OrderedArpeggio::take(const QelMidiMessage& event, SequencePlayer& steps) {
    const auto at = find(event.getD1());
    const bool isHeld = at != held_.end() && at->noteOn.getD1() == event.getD1();
    const int place = static_cast<int>(at - held_.begin());
    if (event.isNoteOn()) {
        if (isHeld) {
            if (at->released) { // its key has been pressed again while it sounds
                at->released = false;
                at->noteOn = event;
            }
            return;
        }
        held_.insert(at, {event, newVoice(), false, false});
        cursor_ += cursor_ >= place ? 1 : 0;
    } else if (event.isNoteOff() && isHeld) {
        if (at->playing) {
            at->released = true;
        } else {
            remove(place, steps);
        }
    }
}

// Of a note that does not sound. The cursor goes on to the next higher one, whatever the direction.
void OrderedArpeggio::remove(int place, SequencePlayer& steps) {
    held_.erase(held_.begin() + place);
    if (held_.empty()) {
        reset();
    } else if (cursor_ > place) {
        --cursor_;
    } else if (cursor_ == count()) {
        cursor_ = 0;
        steps.nextStep();
    }
}

void OrderedArpeggio::process(const ArpeggioBeat& beat, SequencePlayer& steps, NoteSink& sink) {
    if (held_.empty()) {
        return;
    }
    if (cursor_ != none && held_[static_cast<std::size_t>(cursor_)].playing && isEndDue(beat)) {
        endCurrent(steps, sink);
        if (held_.empty()) {
            reset();
            return;
        }
    }
    if (!beat.mayStart(setting().beat)) {
        return;
    }
    if (cursor_ == none) {
        chooseFirst();
    }
    ArpeggioNote& note = held_[static_cast<std::size_t>(cursor_)];
    if (!note.playing) {
        beat.start(note.noteOn.getHostTime());
        steps.start(note.noteOn, note.voice, beat.now(), sink);
        note.playing = true;
        noteStarted(beat.now());
    }
}

void OrderedArpeggio::endCurrent(SequencePlayer& steps, NoteSink& sink) {
    const int ended = cursor_;
    ArpeggioNote& note = held_[static_cast<std::size_t>(ended)];
    steps.end(note.voice, sink);
    note.playing = false;
    const bool released = note.released;
    moveOn(steps);
    if (released) {
        held_.erase(held_.begin() + ended);
        cursor_ -= cursor_ > ended ? 1 : 0;
        cursor_ = held_.empty() ? none : std::min(cursor_, count() - 1);
    }
}

void OrderedArpeggio::moveOn(SequencePlayer& steps) {
    const Move move = next(cursor_, count());
    cursor_ = move.place;
    if (move.passed) {
        steps.nextStep();
    }
}

void OrderedArpeggio::chooseFirst() {
    cursor_ = firstPlace(count());
    if (resumeNote_ != none) {
        const auto at = find(static_cast<std::int8_t>(resumeNote_));
        cursor_ = at == held_.end() ? 0 : static_cast<int>(at - held_.begin());
        resumeNote_ = none;
    }
}

void OrderedArpeggio::reset() {
    held_.clear();
    cursor_ = resumeNote_ = none;
    resetDirection();
    forgetTime();
}

void OrderedArpeggio::pause(SequencePlayer& steps) {
    if (cursor_ != none) {
        if (held_[static_cast<std::size_t>(cursor_)].playing) {
            moveOn(steps);
        }
        resumeNote_ = held_[static_cast<std::size_t>(cursor_)].noteOn.getD1();
    }
    held_.clear();
    cursor_ = none;
    forgetTime();
}

void OrderedArpeggio::continueFrom(const Arpeggio& other) {
    const auto& ordered = static_cast<const OrderedArpeggio&>(other);
    resumeNote_ = ordered.resumeNote_;
    takeDirection(ordered);
}

void OrderedArpeggio::forgetOutput(std::int8_t output, SequencePlayer& steps) {
    for (int place = count() - 1; place >= 0; --place) {
        ArpeggioNote& note = held_[static_cast<std::size_t>(place)];
        if (note.noteOn.getOutput() != output) {
            continue;
        }
        if (note.playing && steps.isSounding(note.voice)) { // where its key went before it was pressed again
            note.released = true;
        } else {
            remove(place, steps);
        }
    }
}

OrderedArpeggio::Move UpArpeggio::next(int place, int count) {
    const bool last = place + 1 >= count;
    return {last ? 0 : place + 1, last};
}

OrderedArpeggio::Move DownArpeggio::next(int place, int count) {
    const bool last = place == 0;
    return {last ? count - 1 : place - 1, last};
}

OrderedArpeggio::Move UpDownArpeggio::next(int place, int count) {
    if (count == 1) {
        up_ = true;
        return {0, true};
    }
    const bool turns = up_ ? place + 1 >= count : place == 0;
    up_ = up_ != turns;
    const int to = up_ ? place + 1 : place - 1;
    return {to, to == 0};
}

} // namespace Backend::ArpeggioManagement::Arpeggios
