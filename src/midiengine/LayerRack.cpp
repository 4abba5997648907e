#include "midiengine/LayerRack.h"

#include <algorithm>

namespace Backend::MidiEngine {

void LayerRack::set(const Layers::LayerList& layers) {
    takingPart_.clear();
    machines_.clear();
    std::vector<PlayingLayer> paused;
    paused.swap(layers_);
    layers_.reserve(layers.size());
    for (const Layers::Layer& layer : layers) {
        const PlayingLayer& playing = layers_.emplace_back(layer);
        const std::size_t place = layers_.size() - 1;
        if (playing.machine() != nullptr && place < paused.size() && paused[place].machine() != nullptr) {
            playing.machine()->continueFrom(*paused[place].machine());
        }
    }
    const bool anySolo =
        std::any_of(layers.begin(), layers.end(), [](const Layers::Layer& layer) { return layer.solo; });
    hasVelocityRange_ = false;
    takingPart_.reserve(layers_.size());
    for (PlayingLayer& layer : layers_) {
        if (anySolo ? layer.settings().solo : !layer.settings().mute) {
            takingPart_.push_back(&layer);
            if (layer.machine() != nullptr) {
                machines_.push_back(&layer);
            }
        }
        hasVelocityRange_ = hasVelocityRange_ || layer.settings().hasVelocityRange();
    }
}

template <typename Work>
void LayerRack::inTurn(const std::vector<PlayingLayer*>& layers, LayerOutput& engine, const Work& work) {
    for (PlayingLayer* layer : layers) {
        engine.setSendingLayer(static_cast<std::int16_t>(layer - layers_.data()));
        work(*layer);
    }
    engine.setSendingLayer(-1);
}

void LayerRack::noteOn(const QelMidiMessage& message, LayerOutput& engine) {
    inTurn(takingPart_, engine, [&](PlayingLayer& layer) { layer.noteOn(message, engine); });
    watch();
}

void LayerRack::noteOff(const QelMidiMessage& message, LayerOutput& engine) {
    inTurn(takingPart_, engine, [&](PlayingLayer& layer) { layer.noteOff(message, engine); });
    watch();
}

void LayerRack::other(const QelMidiMessage& message, LayerOutput& engine) {
    if (++pass_ == 0) {
        lastPass_.fill(0);
        pass_ = 1;
    }
    QelMidiMessage placed;
    inTurn(takingPart_, engine, [&](const PlayingLayer& layer) {
        if (!layer.takesOther(message, engine, placed)) {
            return;
        }
        std::uint32_t& last = lastPass_[static_cast<std::size_t>(placed.getOutput()) * 16 +
                                        static_cast<std::size_t>(placed.getChannel())];
        if (last == pass_) {
            return;
        }
        last = pass_;
        engine.followControl(message);
        engine.sendFromLayer(placed, false, Beginning::unknown);
    });
}

void LayerRack::watch() {
    const bool before = running_;
    running_ = std::any_of(machines_.begin(), machines_.end(), [](const auto* layer) { return layer->isRunning(); });
    if (before && !running_) {
        for (const PlayingLayer* layer : machines_) {
            layer->machine()->rewind();
        }
    }
}

void LayerRack::advance(Ticks now, LayerOutput& engine) {
    inTurn(machines_, engine, [&](const PlayingLayer& layer) { layer.machine()->advance(now, engine); });
    watch();
}

void LayerRack::pulse() {
    for (const PlayingLayer* layer : machines_) {
        layer->machine()->pulse();
    }
}

bool LayerRack::resume(const QelMidiMessage& noteOn, LayerOutput& engine) {
    bool taken = false;
    inTurn(machines_, engine, [&](PlayingLayer& layer) {
        if (layer.machine()->hasArpeggio()) {
            layer.noteOn(noteOn, engine);
            taken = taken || layer.isRunning();
        }
    });
    watch();
    return taken;
}

void LayerRack::forgetPauses() {
    for (PlayingLayer* layer : machines_) {
        if (!layer->isRunning()) {
            layer->reset(false);
        }
    }
}

void LayerRack::reset(bool pausing) {
    for (PlayingLayer& layer : layers_) {
        layer.reset(pausing);
    }
    running_ = false;
}

void LayerRack::forgetOutput(std::int8_t output) {
    for (PlayingLayer& layer : layers_) {
        layer.forgetOutput(output);
    }
    watch();
}

} // namespace Backend::MidiEngine
