#include "midiengine/PlayingLayer.h"

namespace Backend::MidiEngine {

namespace {
// More notes at once come only from a device that never sends a Note Off; then there is HeldNotes::capacity.
constexpr std::size_t usuallyHeld = 512;
} // namespace

PlayingLayer::PlayingLayer(const Layers::Layer& settings) : settings_(settings), machine_(LayerMachine::of(settings)) {
    stack_.reserve(usuallyHeld);
    for (std::size_t data = 0; data < noteOf_.size(); ++data) {
        noteOf_[data] = settings_.transform(static_cast<std::int8_t>(data));
        velocityOf_[data] = settings_.transformVelocity(static_cast<std::int8_t>(data));
    }
}

bool PlayingLayer::takes(const QelMidiMessage& message) const {
    const std::int8_t note = message.getD1();
    const std::int8_t velocity = message.getD2();
    return note >= settings_.minNote.getNumber() && note <= settings_.maxNote.getNumber() &&
           velocity >= settings_.minVelocity && velocity <= settings_.maxVelocity &&
           !(settings_.zone >= 0 && message.getZone() >= 0 && settings_.zone != message.getZone());
}

bool PlayingLayer::route(QelMidiMessage& message, const LayerOutput& engine) const {
    const std::int8_t output = settings_.output == -1 ? engine.defaultOutput() : settings_.output;
    if (!engine.canSendTo(output)) {
        return false;
    }
    message.setOutput(output);
    message.setChannel(settings_.channel);
    if (settings_.channel > 15) {
        message.setChannel(0);
    }
    return true;
}

void PlayingLayer::start(QelMidiMessage message, StackedNote& note, LayerOutput& engine) const {
    if (!route(message, engine)) {
        return;
    }
    message.setD1(noteOf_[static_cast<std::size_t>(note.note)]);
    message.setD2(velocityOf_[static_cast<std::size_t>(message.getD2())]);
    note.place = {message.getOutput(), message.getChannel(), message.getD1()};
    if (machine_) {
        note.voice = machine_->noteOn(message, engine);
    } else {
        note.heard = engine.sendFromLayer(message, settings_.useNoteStack, Beginning::unknown);
    }
}

void PlayingLayer::end(QelMidiMessage message, const StackedNote& note, LayerOutput& engine) const {
    if (note.place.exists()) { // whatever has changed since: a note ends where it began
        message.setOutput(note.place.output);
        message.setChannel(note.place.channel);
        message.setD1(note.place.note);
    } else if (route(message, engine)) {
        message.setD1(noteOf_[static_cast<std::size_t>(note.note)]);
    } else {
        return;
    }
    message.setD2(velocityOf_[static_cast<std::size_t>(message.getD2())]);
    if (!machine_) {
        engine.sendFromLayer(message, settings_.useNoteStack, note.beginning());
    } else if (note.place.exists()) {
        machine_->noteOff(message, note.voice, engine);
    }
}

// Ends a note that the layer knows nothing of.
void PlayingLayer::endUnknown(QelMidiMessage message, LayerOutput& engine) const {
    if (machine_ || !route(message, engine)) { // a machine ends what it began itself
        return;
    }
    message.setD1(noteOf_[static_cast<std::size_t>(message.getD1())]);
    message.setD2(velocityOf_[static_cast<std::size_t>(message.getD2())]);
    engine.sendFromLayer(message, settings_.useNoteStack, Beginning::unknown);
}

std::vector<PlayingLayer::StackedNote>::iterator PlayingLayer::findOnStack(std::int8_t note, std::int8_t input,
                                                                           std::int8_t zone) {
    auto found = stack_.end();
    for (auto i = stack_.end(); i != stack_.begin();) {
        --i;
        if (i->note != note) {
            continue;
        }
        if (i->input == input && i->zone == zone) {
            return i;
        }
        if (found == stack_.end()) {
            found = i;
        }
    }
    return found;
}

void PlayingLayer::noteOn(const QelMidiMessage& message, LayerOutput& engine) {
    if (!takes(message)) {
        return;
    }
    const auto key = static_cast<std::size_t>(message.getD1());
    const bool toggling = !settings_.toggle.isOff();
    if (toggling && toggledOn_[key] && settings_.toggle.isType1()) {
        endToggled(message, engine);
    } else if (settings_.mono && !stack_.empty()) {
        startMono(message, engine, toggling);
    } else {
        if (toggling) {
            if (toggledOn_[key]) { // struck again
                endToggled(message, engine);
            }
            toggledOn_.set(key);
        }
        startStacked(message, engine);
    }
}

void PlayingLayer::startStacked(const QelMidiMessage& message, LayerOutput& engine) {
    stack_.push_back({message.getD1(), message.getD2(), message.getInput(), message.getZone(), {}, false, 0});
    start(message, stack_.back(), engine);
}

// The layer gives up the note that it plays. Without arpeggio the new note starts before the old one ends: legato,
// deliberately. An arpeggio holds one note at a time.
void PlayingLayer::startMono(const QelMidiMessage& message, LayerOutput& engine, bool toggling) {
    const StackedNote last = stack_.back();
    if (toggling) {
        toggledOn_.reset(static_cast<std::size_t>(last.note));
        stack_.pop_back();
        toggledOn_.set(static_cast<std::size_t>(message.getD1()));
    } else {
        stack_.back().place = {};
        stack_.back().heard = false;
    }
    QelMidiMessage noteOff = message;
    noteOff.setToNoteOff();
    noteOff.setD2(last.velocity);
    const bool endsFirst = machine_ && machine_->hasArpeggio();
    if (endsFirst) {
        end(noteOff, last, engine);
    }
    startStacked(message, engine);
    if (!endsFirst) {
        end(noteOff, last, engine);
    }
}

void PlayingLayer::endToggled(const QelMidiMessage& message, LayerOutput& engine) {
    toggledOn_.reset(static_cast<std::size_t>(message.getD1()));
    QelMidiMessage noteOff = message;
    noteOff.setToNoteOff();
    const auto i = findOnStack(message.getD1(), message.getInput(), message.getZone());
    if (i == stack_.end()) {
        endUnknown(noteOff, engine);
        return;
    }
    const StackedNote note = *i;
    stack_.erase(i);
    end(noteOff, note, engine);
}

void PlayingLayer::noteOff(const QelMidiMessage& message, LayerOutput& engine) {
    if (!settings_.toggle.isOff() || !takes(message)) {
        return;
    }
    const auto i = findOnStack(message.getD1(), message.getInput(), message.getZone());
    if (i == stack_.end()) {
        if (!settings_.mono) {
            endUnknown(message, engine);
        }
        return;
    }
    const StackedNote note = *i;
    const bool top = i + 1 == stack_.end();
    stack_.erase(i);
    if (settings_.mono) {
        if (!top) {
            return;
        }
        const bool endsFirst = machine_ && machine_->hasArpeggio();
        if (endsFirst) {
            end(message, note, engine);
        }
        if (!stack_.empty()) { // back to the note that is still held
            QelMidiMessage noteOn = message;
            noteOn.setToNoteOn();
            start(noteOn, stack_.back(), engine);
        }
        if (endsFirst) {
            return;
        }
    }
    end(message, note, engine);
}

bool PlayingLayer::takesOther(const QelMidiMessage& message, const LayerOutput& engine, QelMidiMessage& placed) const {
    if (settings_.zone >= 0 && message.getZone() >= 0 && settings_.zone != message.getZone()) {
        return false;
    }
    placed = message;
    return route(placed, engine);
}

void PlayingLayer::reset(bool pausing) {
    stack_.clear();
    toggledOn_.reset();
    if (machine_) {
        pausing ? machine_->pause() : machine_->reset();
    }
}

void PlayingLayer::forgetOutput(std::int8_t output) {
    for (StackedNote& note : stack_) {
        if (note.place.output == output) {
            note.place = {};
            note.heard = false;
        }
    }
    if (machine_) {
        machine_->forgetOutput(output);
    }
}

} // namespace Backend::MidiEngine
