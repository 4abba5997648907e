// The layers of the current program and what functions do to them.
#pragma once

#include "backend/LayerSet.h"
#include "backend/SequencePresetManager.h"
#include "input/SectionPresets.h"
#include "midiengine/MidiEngineMessageManager.h"
#include "values/NoteToggle.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace Backend {

// Owns the master list; the engine gets a new copy, with the reset that belongs to it, whenever something has really
// changed. "selected" in a change is the layer selected for data entry. [backend]
class LayerSection final {
public:
    // The references outlive the section.
    LayerSection(MidiEngine::MidiEngineMessageManager& engine, SequenceManagement::SequencePresetManager& sequences,
                 std::filesystem::path presetFolder, const std::function<void(const Platform::Fault&)>& reportFault);

    [[nodiscard]] const Layers::LayerList& layers() const { return set_.layers; }

    // Whole sections. The first layer is then selected for both purposes.

    void setDefault();
    // A section of a program, which may stand for a preset (SectionPresets).
    void read(const Platform::XmlElement& section);
    // With `allowReference` a section that its preset says all of is written as the name of the preset.
    void write(std::ostream& out, int depth, bool allowReference) const;
    void set(LayerSet set);

    // Presets, by name.

    // What cannot be read is reported and changes nothing.
    void loadPreset(const std::string& name);
    // With a list of places only those layers, to be added to others. A file that cannot be written changes nothing,
    // without a word.
    void savePreset(const std::string& name, const std::vector<int>& places);
    void storePreset(const std::string& name, const Layers::LayerList& layers) { presets_.store(name, {layers, {}}); }
    void deletePreset(const std::string& name) { presets_.remove(name); }

    // Single layers.
    // An edited list: what is selected stays so, as far as it is there.
    void replace(Layers::LayerList layers);
    // Another number after each change of layers or selection.
    [[nodiscard]] const std::string& presetName() const { return set_.presetName; }
    [[nodiscard]] std::uint32_t revision() const { return revision_; }

    void selectForData(const SelectType& which);
    void selectForEdit(const SelectType& which);
    [[nodiscard]] int selectedForData() const { return dataSelected_; }
    [[nodiscard]] int selectedForEdit() const { return editSelected_; }

    // A relative value is added to the layer's own number, a fixed one replaces it, within -127..127; whether the
    // layer's own value is relative or fixed stays as it is.
    void changeTranspose(const SelectType& which, const RelativeFixedValue& value);
    void changeVelocity(const SelectType& which, const RelativeFixedValue& value);
    // "all" with toggle toggles each by itself.
    void changeMute(const SelectType& which, const OnOffToggle& how);
    void changeMono(const SelectType& which, const OnOffToggle& how);
    void changeSolo(const SelectType& which, const OnOffToggle& how);
    void changeNoteToggle(const SelectType& which, const NoteToggle& mode);
    // A sequence has another content now.
    void sequenceChanged(const std::string& name);

private:
    void publish();
    // Hands the addressed layers to `change`; the engine gets the list if any layer differs afterwards.
    void change(const SelectType& which, const std::function<void(Layers::Layer&)>& change);

    MidiEngine::MidiEngineMessageManager& engine_;
    SequenceManagement::SequencePresetManager& sequences_;
    Component::SectionPresets<LayerSet, std::vector<int>> presets_;
    LayerSet set_;
    bool isChanged_ = false; // since it was read as a whole
    int dataSelected_ = 0;
    int editSelected_ = 0;
    std::uint32_t revision_ = 0;
};

} // namespace Backend
