// The panel of the layers: a strip each.
#pragma once

#include "desktop/panels/PanelFrame.h"

#include <QScrollArea>
#include <vector>

namespace Desktop {

class LayerStrip;

class LayersPanel final : public PanelFrame {
    Q_OBJECT

public:
    LayersPanel(Models& models, QWidget* parent);

private:
    void refresh();

    QWidget* content_;
    QVBoxLayout* strips_;
    std::vector<LayerStrip*> list_;
};

} // namespace Desktop
