#include "desktop/models/LayersModel.h"

#include "core/QelIF.h"
#include "desktop/models/Models.h"
#include "gui/GuiMessages.h"
#include "values/SelectType.h"

#include <algorithm>

namespace Desktop {

using Backend::Layers::Layer;
using Backend::Layers::LayerList;

LayersModel::LayersModel(Models& models) : models_(models) {
    onCopy<Gui::LayersInfo>(idOf(Gui::GuiMessage::layers), [this](Gui::LayersInfo info) {
        if (!underway_.isOutdated(info.layers) && info != info_) {
            info_ = std::move(info);
            emit changed();
        }
    });
}

QString LayersModel::summary(int layer) const {
    const auto place = static_cast<std::size_t>(layer);
    if (layer < 0 || place >= info_.layers.size()) {
        return {};
    }
    const std::string text =
        info_.layers[place].summary([this](int output) { return models_.ports.outputName(output).toStdString(); });
    const auto end = text.find("  ");
    return QString::fromStdString(end == std::string::npos ? text : text.substr(end + 2));
}

void LayersModel::select(int layer) {
    models_.ask([layer](Backend::QelIF& qel) {
        qel.dataSelectLayer(SelectType::fixed(layer));
        qel.editSelectLayer(SelectType::fixed(layer));
    });
}

void LayersModel::edit(const QString& text, LayerList after, int key) {
    for (std::size_t i = 0; i < after.size(); ++i) {
        after[i].index = static_cast<std::int32_t>(i);
    }
    models_.edits.edit<LayerList>(
        text, info_.layers, std::move(after), [this](const LayerList& layers) { apply(layers); }, key);
}

void LayersModel::apply(const LayerList& layers) {
    info_.layers = layers;
    underway_.posted(layers);
    models_.ask([layers](Backend::QelIF& qel) { qel.setLayers(layers); });
    emit changed();
}

void LayersModel::change(const QString& text, int layer, const Layer& changedLayer) {
    LayerList after = info_.layers;
    const auto place = static_cast<std::size_t>(layer);
    if (layer >= 0 && place < after.size()) {
        after[place] = changedLayer;
        edit(text, std::move(after), models_.edits.keyFor(2 + layer));
    }
}

void LayersModel::add() {
    LayerList after = info_.layers;
    Layer layer;
    layer.channel = static_cast<std::int8_t>(std::min<std::size_t>(after.size(), 15));
    after.push_back(layer);
    edit(tr("add a layer"), std::move(after));
}

void LayersModel::remove(int layer) {
    LayerList after = info_.layers;
    if (layer >= 0 && static_cast<std::size_t>(layer) < after.size()) {
        after.erase(after.begin() + layer);
        edit(tr("remove layer %1").arg(layer + 1), std::move(after));
    }
}

void LayersModel::moveTo(int from, int to) {
    LayerList after = info_.layers;
    const int size = static_cast<int>(after.size());
    if (from < 0 || to < 0 || from >= size || to >= size || from == to) {
        return;
    }
    Layer layer = after[static_cast<std::size_t>(from)];
    after.erase(after.begin() + from);
    after.insert(after.begin() + to, layer);
    edit(tr("reorder the layers"), std::move(after));
}

void LayersModel::loadPreset(const std::string& name) {
    models_.edits.perform(
        tr("load the layer preset %1").arg(QString::fromStdString(name)),
        [this, name] { models_.ask([name](Backend::QelIF& qel) { qel.loadLayerPreset(name); }); },
        [this, before = info_.layers] { apply(before); });
}

} // namespace Desktop
