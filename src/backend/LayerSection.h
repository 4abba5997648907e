// The layers of the current program and what functions do to them.
#pragma once

#include "midiengine/LayerList.h"
#include "midiengine/MidiEngineMessageManager.h"
#include "values/NoteToggle.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <functional>

namespace Backend {

// Owns the master list; the engine gets a new copy, with the reset that belongs to it, whenever something has really
// changed. "selected" in a change is the layer selected for data entry. [backend]
class LayerSection final {
public:
    // `engine` outlives the section.
    explicit LayerSection(MidiEngine::MidiEngineMessageManager& engine) : engine_(engine) {}

    [[nodiscard]] const Layers::LayerList& layers() const { return layers_; }
    // Replaces all layers; the first one is then selected for both purposes.
    void set(Layers::LayerList layers);

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

private:
    // Hands the addressed layers to `change`; the engine gets the list if any layer differs afterwards.
    void change(const SelectType& which, const std::function<void(Layers::Layer&)>& change);

    MidiEngine::MidiEngineMessageManager& engine_;
    Layers::LayerList layers_;
    int dataSelected_ = 0;
    int editSelected_ = 0;
};

} // namespace Backend
