#include "desktop/panels/LayersPanel.h"

#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/LayerStrip.h"

namespace Desktop {

LayersPanel::LayersPanel(Models& models, QWidget* parent)
    : StripsPanel(Gui::Panel::layer, tr("Layers"), tr("The sounds that you play with one key"), grid(104),
                  {tr("Add a layer"), tr("Adds a layer at the end"), [&models] { models.layers.add(); }}, models,
                  parent) {
    connect(&models.layers, &Model::changed, this, &LayersPanel::refresh);
    connect(&models.ports, &Model::changed, this, &LayersPanel::refresh);
    connect(&models.sequences, &Model::changed, this, &LayersPanel::refresh);
    const auto lamps = [this] {
        for (Strip* const strip : strips()) {
            static_cast<LayerStrip*>(strip)->showLamp();
        }
    };
    connect(&models.playing, &PlayingModel::noteChanged, this, lamps);
    connect(&models.playing, &PlayingModel::cleared, this, lamps);
    const auto save = [this](const std::string& name, const std::vector<int>& places) {
        this->models().ask([name, places](Backend::QelIF& qel) { qel.saveLayerPreset(name, places); });
    };
    setPresets({"Layer Presets", [this] { return this->models().layers.presetName(); },
                [this](const std::string& name) { this->models().layers.loadPreset(name); },
                [save](const std::string& name) { save(name, {}); },
                [this](const std::string& name) {
                    this->models().ask([name](Backend::QelIF& qel) { qel.deleteLayerPreset(name); });
                },
                [this] {
                    std::vector<PresetElement> elements;
                    for (const auto& layer : this->models().layers.layers()) {
                        elements.push_back(
                            {tr("L:%1   %2").arg(layer.index + 1).arg(this->models().layers.summary(layer.index)),
                             layer.index == this->models().layers.selected()});
                    }
                    return elements;
                },
                save});
    refresh();
}

Strip* LayersPanel::makeStrip(int place, QWidget* parent) {
    return new LayerStrip(models(), place, parent);
}

void LayersPanel::refresh() {
    showStrips(models().layers.layers().size());
    if (const int selected = models().layers.selectedForEdit(); selected != selectedForEdit_) {
        selectedForEdit_ = selected;
        bringIntoView(selected);
    }
}

} // namespace Desktop
