#include "backend/LayerSet.h"

#include <algorithm>

namespace Backend {

void LayerSet::merge(const LayerSet& other) {
    for (const Layers::Layer& layer : other.layers) {
        if (layers.size() < Layers::maxLayers) {
            layers.push_back(layer);
            layers.back().index = static_cast<std::int32_t>(layers.size()) - 1;
        }
    }
}

bool LayerSet::hasSameActions(const LayerSet& other) const {
    const auto storedAlike = [](Layers::Layer a, const Layers::Layer& b) {
        a.solo = b.solo;
        return a == b;
    };
    return std::equal(layers.begin(), layers.end(), other.layers.begin(), other.layers.end(), storedAlike);
}

} // namespace Backend
