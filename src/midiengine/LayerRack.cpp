#include "midiengine/LayerRack.h"

#include <algorithm>

namespace Backend::MidiEngine {

void LayerRack::set(const Layers::LayerList& layers) {
    takingPart_.clear();
    layers_.clear();
    layers_.reserve(layers.size());
    for (const Layers::Layer& layer : layers) {
        layers_.emplace_back(layer);
    }
    const bool anySolo =
        std::any_of(layers.begin(), layers.end(), [](const Layers::Layer& layer) { return layer.solo; });
    hasVelocityRange_ = false;
    takingPart_.reserve(layers_.size());
    for (PlayingLayer& layer : layers_) {
        if (anySolo ? layer.settings().solo : !layer.settings().mute) {
            takingPart_.push_back(&layer);
        }
        hasVelocityRange_ = hasVelocityRange_ || layer.settings().hasVelocityRange();
    }
}

void LayerRack::noteOn(const QelMidiMessage& message, LayerOutput& engine) {
    for (PlayingLayer* layer : takingPart_) {
        layer->noteOn(message, engine);
    }
}

void LayerRack::noteOff(const QelMidiMessage& message, LayerOutput& engine) {
    for (PlayingLayer* layer : takingPart_) {
        layer->noteOff(message, engine);
    }
}

void LayerRack::other(const QelMidiMessage& message, LayerOutput& engine) {
    if (++pass_ == 0) {
        lastPass_.fill(0);
        pass_ = 1;
    }
    QelMidiMessage placed;
    for (const PlayingLayer* layer : takingPart_) {
        if (!layer->takesOther(message, engine, placed)) {
            continue;
        }
        std::uint32_t& last = lastPass_[static_cast<std::size_t>(placed.getOutput()) * 16 +
                                        static_cast<std::size_t>(placed.getChannel())];
        if (last == pass_) {
            continue;
        }
        last = pass_;
        engine.followControl(message);
        engine.sendFromLayer(placed, false, Beginning::unknown);
    }
}

void LayerRack::reset() {
    for (PlayingLayer& layer : layers_) {
        layer.reset();
    }
}

void LayerRack::forgetOutput(std::int8_t output) {
    for (PlayingLayer& layer : layers_) {
        layer.forgetOutput(output);
    }
}

} // namespace Backend::MidiEngine
