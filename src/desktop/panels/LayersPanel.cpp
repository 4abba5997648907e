#include "desktop/panels/LayersPanel.h"

#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/LayerStrip.h"
#include "desktop/widgets/ColumnArea.h"

#include <QTimer>

namespace Desktop {

LayersPanel::LayersPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::layer, tr("Layers"), tr("The sounds that you play with one key"), models, parent) {
    QToolButton* const add = makeButton("+", tr("Add a layer"), tr("Adds a layer at the end"), this);
    connect(add, &QToolButton::clicked, this, [this] { this->models().layers.add(); });
    addHeadWidget(add);
    auto* const area = new ColumnArea(this);
    content_ = new QWidget(area);
    strips_ = new QVBoxLayout(content_);
    strips_->setContentsMargins(0, 0, 0, 0);
    strips_->setSpacing(grid(1));
    strips_->addStretch(1);
    area->setWidget(content_);
    area->setMinimumWidth(grid(104));
    body().addWidget(area);
    connect(&models.layers, &Model::changed, this, &LayersPanel::refresh);
    connect(&models.ports, &Model::changed, this, &LayersPanel::refresh);
    connect(&models.sequences, &Model::changed, this, &LayersPanel::refresh);
    const auto lamps = [this] {
        for (LayerStrip* const strip : list_) {
            strip->showLamp();
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

void LayersPanel::refresh() {
    const std::size_t count = models().layers.layers().size();
    while (list_.size() > count) {
        list_.back()->hide();
        list_.back()->deleteLater(); // it may be the one that asked
        list_.pop_back();
    }
    while (list_.size() < count) {
        auto* const strip = new LayerStrip(models(), static_cast<int>(list_.size()), content_);
        strips_->insertWidget(strips_->count() - 1, strip);
        list_.push_back(strip);
    }
    for (LayerStrip* const strip : list_) {
        strip->refresh();
        strip->setVisible(true);
    }
    showPresetName();
}

} // namespace Desktop
