#include "backend/LayerSection.h"

#include "backend/Selection.h"

#include <algorithm>
#include <utility>

namespace Backend {

namespace {
constexpr int largestNumber = 127;

void apply(RelativeFixedValue& number, const RelativeFixedValue& change) {
    number.setValue(std::clamp(change.applyTo(number.getValue()), -largestNumber, largestNumber));
}
} // namespace

void LayerSection::set(Layers::LayerList layers) {
    layers_ = std::move(layers);
    dataSelected_ = editSelected_ = 0;
    engine_.postSetLayerList(layers_);
}

void LayerSection::selectForData(const SelectType& which) {
    dataSelected_ = selectedPlace(which, dataSelected_, static_cast<int>(layers_.size()));
}

void LayerSection::selectForEdit(const SelectType& which) {
    editSelected_ = selectedPlace(which, editSelected_, static_cast<int>(layers_.size()));
}

void LayerSection::changeTranspose(const SelectType& which, const RelativeFixedValue& value) {
    change(which, [&](Layers::Layer& layer) { apply(layer.transpose, value); });
}

void LayerSection::changeVelocity(const SelectType& which, const RelativeFixedValue& value) {
    change(which, [&](Layers::Layer& layer) { apply(layer.velocity, value); });
}

void LayerSection::changeMute(const SelectType& which, const OnOffToggle& how) {
    change(which, [&](Layers::Layer& layer) { layer.mute = how.applyTo(layer.mute); });
}

void LayerSection::changeMono(const SelectType& which, const OnOffToggle& how) {
    change(which, [&](Layers::Layer& layer) { layer.mono = how.applyTo(layer.mono); });
}

void LayerSection::changeSolo(const SelectType& which, const OnOffToggle& how) {
    change(which, [&](Layers::Layer& layer) { layer.solo = how.applyTo(layer.solo); });
}

void LayerSection::changeNoteToggle(const SelectType& which, const NoteToggle& mode) {
    change(which, [&](Layers::Layer& layer) { layer.toggle = mode; });
}

void LayerSection::change(const SelectType& which, const std::function<void(Layers::Layer&)>& change) {
    bool changed = false;
    for (const int place : addressedPlaces(which, dataSelected_, static_cast<int>(layers_.size()))) {
        Layers::Layer& layer = layers_[static_cast<std::size_t>(place)];
        const Layers::Layer before = layer;
        change(layer);
        changed = changed || !(layer == before);
    }
    if (changed) {
        engine_.postSetLayerList(layers_);
    }
}

} // namespace Backend
