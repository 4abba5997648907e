#include "generators/OscillatorRack.h"

namespace Backend::Oscillators {

namespace {

constexpr std::int32_t noStopValue = -1;

std::optional<MidiEngine::QelMidiMessage> stop(RunningOscillator& oscillator) {
    oscillator.setPlaying(false);
    const std::int32_t value = oscillator.settings().stopValue;
    if (value == noStopValue || !oscillator.settings().midiMessage.isValid()) {
        return std::nullopt;
    }
    oscillator.tookStopValue();
    return oscillator.messageOf(value);
}

} // namespace

void OscillatorRack::set(const OscList& list) {
    for (const std::size_t place : playing_) {
        const Oscillator* successor = list.find({static_cast<std::int32_t>(place)});
        if (successor != nullptr && successor->playing) {
            continue;
        }
        if (const auto message = stop(oscillators_[place])) {
            output_.playFromOscillator(*message);
        }
    }
    oscillators_.clear();
    for (const Oscillator& oscillator : list) {
        oscillators_.emplace_back(oscillator);
    }
    playing_.reserve(oscillators_.size());
    listPlaying();
}

std::optional<MidiEngine::QelMidiMessage> OscillatorRack::setPlaying(OscId id, bool on) {
    RunningOscillator* oscillator = find(id);
    if (oscillator == nullptr || oscillator->settings().playing == on) {
        return std::nullopt;
    }
    std::optional<MidiEngine::QelMidiMessage> stopMessage;
    if (on) {
        oscillator->resume();
        oscillator->setPlaying(true);
    } else {
        stopMessage = stop(*oscillator);
    }
    listPlaying();
    return stopMessage;
}

void OscillatorRack::setSpeed(OscId id, std::int32_t speed) {
    if (RunningOscillator* oscillator = find(id)) {
        oscillator->setSpeed(speed);
    }
}

void OscillatorRack::advance(Ticks now) {
    for (const std::size_t place : playing_) {
        RunningOscillator& oscillator = oscillators_[place];
        if (const auto step = oscillator.advance(now)) {
            if (oscillator.settings().midiMessage.isValid()) {
                output_.playFromOscillator(oscillator.messageOf(step->value));
            }
            if (step->isShown) {
                output_.oscillatorMoved({static_cast<std::int32_t>(place)}, step->value);
            }
        }
    }
}

RunningOscillator* OscillatorRack::find(OscId id) {
    const bool isThere = id.index >= 0 && static_cast<std::size_t>(id.index) < oscillators_.size();
    return isThere ? &oscillators_[static_cast<std::size_t>(id.index)] : nullptr;
}

void OscillatorRack::listPlaying() {
    playing_.clear();
    for (std::size_t place = 0; place < oscillators_.size(); ++place) {
        if (oscillators_[place].settings().playing) {
            playing_.push_back(place);
        }
    }
}

} // namespace Backend::Oscillators
