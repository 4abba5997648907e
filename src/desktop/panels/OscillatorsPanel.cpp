#include "desktop/panels/OscillatorsPanel.h"

#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/OscillatorStrip.h"

namespace Desktop {

OscillatorsPanel::OscillatorsPanel(Models& models, QWidget* parent)
    : StripsPanel(
          Gui::Panel::oscillator, tr("Oscillators"), tr("They move a controller up and down in time"), grid(108),
          {tr("Add an oscillator"), tr("Adds an oscillator at the end"), [&models] { models.oscillators.add(); },
           tr("An oscillator moves a controller, the pitch or another message up and down in time with the music: a "
              "tremolo, a wah, a gate.\n\nAdd one, or load a preset.")},
          models, parent) {
    connect(&models.oscillators, &Model::changed, this, &OscillatorsPanel::refresh);
    connect(&models.oscillators, &OscillatorsModel::valueMoved, this, [this](int oscillator, int value) {
        if (oscillator >= 0 && static_cast<std::size_t>(oscillator) < strips().size()) {
            static_cast<OscillatorStrip*>(strips()[static_cast<std::size_t>(oscillator)])->setValue(value);
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

Strip* OscillatorsPanel::makeStrip(int place, QWidget* parent) {
    return new OscillatorStrip(models(), place, parent);
}

void OscillatorsPanel::refresh() {
    showStrips(models().oscillators.list().size());
}

} // namespace Desktop
