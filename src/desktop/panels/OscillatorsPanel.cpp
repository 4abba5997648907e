#include "desktop/panels/OscillatorsPanel.h"

#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/OscillatorStrip.h"
#include "desktop/widgets/ColumnArea.h"

namespace Desktop {

OscillatorsPanel::OscillatorsPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::oscillator, tr("Oscillators"), tr("They move a controller up and down in time"), models,
                 parent) {
    QToolButton* const add = makeButton("+", tr("Add an oscillator"), tr("Adds an oscillator at the end"), this);
    connect(add, &QToolButton::clicked, this, [this] { this->models().oscillators.add(); });
    addHeadWidget(add);
    auto* const area = new ColumnArea(this);
    content_ = new QWidget(area);
    strips_ = new QVBoxLayout(content_);
    strips_->setContentsMargins(0, 0, 0, 0);
    strips_->setSpacing(grid(2));
    strips_->addStretch(1);
    area->setWidget(content_);
    area->setMinimumWidth(grid(108));
    body().addWidget(area);
    connect(&models.oscillators, &Model::changed, this, &OscillatorsPanel::refresh);
    connect(&models.oscillators, &OscillatorsModel::valueMoved, this, [this](int oscillator, int value) {
        if (oscillator >= 0 && static_cast<std::size_t>(oscillator) < list_.size()) {
            list_[static_cast<std::size_t>(oscillator)]->setValue(value);
        }
    });
    setPresets({"Oscillator Presets", [this] { return this->models().oscillators.list().presetName; },
                [this](const std::string& name) { this->models().oscillators.loadPreset(name); },
                [this](const std::string& name) {
                    this->models().ask([name](Backend::QelIF& qel) { qel.saveOscillatorPreset(name, {}); });
                },
                [this](const std::string& name) {
                    this->models().ask([name](Backend::QelIF& qel) { qel.deleteOscillatorPreset(name); });
                },
                [this] {
                    std::vector<PresetElement> elements;
                    for (const auto& each : this->models().oscillators.list()) {
                        elements.push_back(
                            {tr("%1   %2")
                                 .arg(each.id + 1)
                                 .arg(QString::fromStdString(each.midiMessage.getEventNameWithCcAndNoteDetail())),
                             each.selected});
                    }
                    return elements;
                },
                [this](const std::string& name, const std::vector<int>& places) {
                    std::vector<OscId> ids;
                    for (const int place : places) {
                        ids.push_back({place});
                    }
                    this->models().ask([name, ids](Backend::QelIF& qel) { qel.saveOscillatorPreset(name, ids); });
                }});
    refresh();
}

void OscillatorsPanel::refresh() {
    const std::size_t count = models().oscillators.list().size();
    while (list_.size() > count) {
        list_.back()->hide();
        list_.back()->deleteLater(); // it may be the one that asked
        list_.pop_back();
    }
    while (list_.size() < count) {
        auto* const strip = new OscillatorStrip(models(), static_cast<int>(list_.size()), content_);
        strips_->insertWidget(strips_->count() - 1, strip);
        list_.push_back(strip);
    }
    for (OscillatorStrip* const strip : list_) {
        strip->refresh();
        strip->setVisible(true);
    }
    showPresetName();
}

} // namespace Desktop
