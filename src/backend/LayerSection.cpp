#include "backend/LayerSection.h"

#include "backend/Selection.h"
#include "midiengine/LayerXml.h"

#include <algorithm>
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

void writeSet(std::ostream& out, int depth, const LayerSet& set) {
    XmlWriter xml(out, depth);
    Layers::writeLayers(xml, set.layers);
}

void writePlaces(std::ostream& out, const LayerSet& set, const std::vector<int>& places) {
    Layers::LayerList chosen;
    for (const int place : places) {
        if (place >= 0 && static_cast<std::size_t>(place) < set.layers.size()) {
            chosen.push_back(set.layers[static_cast<std::size_t>(place)]);
        }
    }
    XmlWriter xml(out);
    Layers::writeLayers(xml, chosen, true);
}

Component::SectionText<LayerSet, std::vector<int>> layersText() {
    return {[](const Platform::XmlElement& section, LayerSet& set) { Layers::readLayers(section, set.layers); },
            writeSet, writePlaces};
}
} // namespace

LayerSection::LayerSection(MidiEngine::MidiEngineMessageManager& engine,
                           SequenceManagement::SequencePresetManager& sequences, std::filesystem::path presetFolder,
                           const std::function<void(const Platform::Fault&)>& reportFault)
    : engine_(engine), sequences_(sequences),
      presets_(std::move(presetFolder), Layers::layersFormat(), layersText(), builtInLayers(), reportFault) {}

// Whole sections. ------------------------------------------------------------------------------------------------

void LayerSection::setDefault() {
    set(builtInLayers());
}

void LayerSection::read(const Platform::XmlElement& section) {
    set(presets_.readSection(section, set_));
}

void LayerSection::write(std::ostream& out, int depth, bool allowReference) const {
    presets_.writeSection(out, depth, set_, isChanged_, allowReference);
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
    if (auto loaded = presets_.load(name, set_)) {
        set(std::move(*loaded));
    }
}

void LayerSection::savePreset(const std::string& name, const std::vector<int>& places) {
    if (presets_.save(name, set_, places)) {
        set_.presetName = name;
        isChanged_ = false;
        ++revision_;
    }
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
