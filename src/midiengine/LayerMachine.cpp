#include "midiengine/LayerMachine.h"

#include "midiengine/LayerNoteSink.h"

namespace Backend::MidiEngine {

using SequenceManagement::SequenceSetting;

std::unique_ptr<LayerMachine> LayerMachine::of(const Layers::Layer& layer) {
    if (!layer.arpeggio && !(layer.sequence && layer.sequence->hasSteps())) {
        return nullptr;
    }
    return std::unique_ptr<LayerMachine>(new LayerMachine(layer));
}

LayerMachine::LayerMachine(const Layers::Layer& layer)
    : arpeggio_(layer.arpeggio ? ArpeggioManagement::Arpeggio::create(*layer.arpeggio) : nullptr),
      sequence_(layer.sequence.value_or(SequenceSetting{})), steps_(sequence_) {}

LayerMachine::Voice LayerMachine::noteOn(const QelMidiMessage& message, LayerOutput& engine) {
    if (arpeggio_) {
        arpeggio_->take(message, steps_);
        return 0;
    }
    if (engine.startTime() == noTicks) {
        engine.beginTime(message.getPpq(), message.getHostTime());
    }
    LayerNoteSink sink(engine, message);
    steps_.start(message, ++lastVoice_, message.getPpq(), sink);
    return lastVoice_;
}

void LayerMachine::noteOff(const QelMidiMessage& message, Voice voice, LayerOutput& engine) {
    if (arpeggio_) {
        arpeggio_->take(message, steps_);
        rewindUnlessRunning();
        return;
    }
    LayerNoteSink sink(engine, message);
    steps_.end(voice, message, sink);
}

void LayerMachine::advance(Ticks now, LayerOutput& engine) {
    if (!isRunning()) {
        return;
    }
    LayerNoteSink sink(engine, now);
    steps_.advance(now, sink);
    if (arpeggio_ && arpeggio_->isRunning()) {
        arpeggio_->process(ArpeggioManagement::ArpeggioBeat(now, engine), steps_, sink);
        rewindUnlessRunning();
    }
}

void LayerMachine::rewindUnlessRunning() {
    if (!arpeggio_->isRunning()) {
        steps_.setStep(0);
    }
}

void LayerMachine::pulse() {
    if (!arpeggio_) {
        steps_.nextStep();
    }
}

void LayerMachine::reset() {
    if (arpeggio_) {
        arpeggio_->reset();
    }
    steps_.reset();
}

void LayerMachine::pause() {
    if (arpeggio_) {
        arpeggio_->pause(steps_);
    }
    const std::size_t step = steps_.step();
    steps_.reset();
    steps_.setStep(step);
}

void LayerMachine::continueFrom(const LayerMachine& other) {
    if (arpeggio_ && other.arpeggio_ && arpeggio_->setting() == other.arpeggio_->setting() &&
        sequence_.hasSameSteps(other.sequence_)) {
        arpeggio_->continueFrom(*other.arpeggio_);
        steps_.setStep(other.steps_.step());
    }
}

void LayerMachine::forgetOutput(std::int8_t output) {
    steps_.forgetOutput(output);
    if (arpeggio_) {
        arpeggio_->forgetOutput(output, steps_);
        rewindUnlessRunning();
    }
}

} // namespace Backend::MidiEngine
