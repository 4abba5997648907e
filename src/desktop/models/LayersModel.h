// The layers.
#pragma once

#include "desktop/models/Model.h"
#include "desktop/models/Underway.h"
#include "gui/GuiCopies.h"

#include <QString>

namespace Desktop {

class Models;

class LayersModel final : public Model {
    Q_OBJECT

public:
    explicit LayersModel(Models& models);

    [[nodiscard]] const Backend::Layers::LayerList& layers() const { return info_.layers; }
    [[nodiscard]] const std::string& presetName() const { return info_.presetName; }
    [[nodiscard]] int selected() const { return info_.dataSelected; }
    [[nodiscard]] int selectedForEdit() const { return info_.editSelected; }
    // Without the layer's number.
    [[nodiscard]] QString summary(int layer) const;

    void select(int layer);
    // Edits, which can be undone. What a drag makes of one layer is one edit.
    void change(const QString& text, int layer, const Backend::Layers::Layer& after);
    void add();
    void remove(int layer);
    void moveTo(int from, int to);
    void loadPreset(const std::string& name);

private:
    void apply(const Backend::Layers::LayerList& layers);
    void edit(const QString& text, Backend::Layers::LayerList after, int key = 0);

    Models& models_;
    Underway<Backend::Layers::LayerList> underway_;
    Gui::LayersInfo info_{Backend::Layers::defaultLayers()};
};

} // namespace Desktop
