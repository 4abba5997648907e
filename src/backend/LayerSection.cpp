#include "backend/LayerSection.h"

#include "backend/Selection.h"
#include "midiengine/LayerXml.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace Backend {

namespace {
constexpr int largestNumber = 127;

void apply(RelativeFixedValue& number, const RelativeFixedValue& change) {
    number.setValue(std::clamp(change.applyTo(number.getValue()), -largestNumber, largestNumber));
}

const LayerSet& builtInLayers() {
    static const LayerSet set{Layers::defaultLayers(), {}};
    return set;
}

void readSet(const Platform::XmlElement& section, LayerSet& set) {
    Layers::readLayers(section, set.layers);
}

std::string sectionText(const Layers::LayerList& layers, bool merge) {
    std::ostringstream text;
    XmlWriter xml(text);
    Layers::writeLayers(xml, layers, merge);
    return text.str();
}
} // namespace

LayerSection::LayerSection(MidiEngine::MidiEngineMessageManager& engine,
                           SequenceManagement::SequencePresetManager& sequences, std::filesystem::path presetFolder,
                           const std::function<void(const Platform::Fault&)>& reportFault)
    : engine_(engine), sequences_(sequences), reportFault_(reportFault),
      presets_({std::move(presetFolder), "Layers"}, Layers::layersFormat(), readSet, builtInLayers()) {}

// Whole sections. ------------------------------------------------------------------------------------------------

void LayerSection::setDefault() {
    set(builtInLayers());
}

void LayerSection::read(const Platform::XmlElement& section) {
    set(presets_.readSection(section, set_));
}

void LayerSection::write(std::ostream& out, int depth, bool allowReference) const {
    XmlWriter xml(out, depth);
    if (allowReference && presets_.saysAll(set_, isChanged_)) {
        xml.begin("Layers").attribute("merge", false).attribute("preset", set_.presetName).content();
        xml.end();
    } else {
        Layers::writeLayers(xml, set_.layers);
    }
}

void LayerSection::set(LayerSet set) {
    set_ = std::move(set);
    isChanged_ = false;
    dataSelected_ = editSelected_ = 0;
    sequences_.forget();
    publish();
}

void LayerSection::replace(Layers::LayerList layers) {
    set_.layers = std::move(layers);
    isChanged_ = true;
    const int last = std::max(0, static_cast<int>(set_.layers.size()) - 1);
    dataSelected_ = std::min(dataSelected_, last);
    editSelected_ = std::min(editSelected_, last);
    publish();
}

void LayerSection::publish() {
    ++revision_;
    sequences_.resolve(set_.layers);
    engine_.postSetLayerList(set_.layers);
}

// Presets. -------------------------------------------------------------------------------------------------------

void LayerSection::loadPreset(const std::string& name) {
    Platform::Result<LayerSet> loaded = presets_.load(name, set_);
    if (!loaded) {
        reportFault_(loaded.fault());
        return;
    }
    set(std::move(loaded.value()));
}

void LayerSection::savePreset(const std::string& name, const std::vector<int>& places) {
    if (places.empty()) {
        if (presets_.folder().write(name, sectionText(set_.layers, false), reportFault_)) {
            set_.presetName = name;
            isChanged_ = false;
            ++revision_;
        }
        return;
    }
    Layers::LayerList chosen;
    for (const int place : places) {
        if (place >= 0 && static_cast<std::size_t>(place) < set_.layers.size()) {
            chosen.push_back(set_.layers[static_cast<std::size_t>(place)]);
        }
    }
    presets_.folder().write(name, sectionText(chosen, true), reportFault_);
}

void LayerSection::storePreset(const std::string& name, const Layers::LayerList& layers) {
    presets_.folder().write(name, sectionText(layers, false), reportFault_);
}

void LayerSection::deletePreset(const std::string& name) {
    presets_.folder().remove(name, reportFault_);
}

// Single layers. -------------------------------------------------------------------------------------------------

void LayerSection::selectForData(const SelectType& which) {
    ++revision_;
    dataSelected_ = selectedPlace(which, dataSelected_, static_cast<int>(set_.layers.size()));
}

void LayerSection::selectForEdit(const SelectType& which) {
    ++revision_;
    editSelected_ = selectedPlace(which, editSelected_, static_cast<int>(set_.layers.size()));
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

void LayerSection::sequenceChanged(const std::string& name) {
    if (std::any_of(set_.layers.begin(), set_.layers.end(),
                    [&](const Layers::Layer& layer) { return layer.sequence && layer.sequence->preset == name; })) {
        publish();
    }
}

void LayerSection::change(const SelectType& which, const std::function<void(Layers::Layer&)>& change) {
    bool changed = false;
    for (const int place : addressedPlaces(which, dataSelected_, static_cast<int>(set_.layers.size()))) {
        Layers::Layer& layer = set_.layers[static_cast<std::size_t>(place)];
        const Layers::Layer before = layer;
        change(layer);
        changed = changed || !(layer == before);
    }
    if (changed) {
        isChanged_ = true;
        publish();
    }
}

} // namespace Backend
