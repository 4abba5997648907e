// The panel of the layers: a strip each.
#pragma once

#include "desktop/panels/StripsPanel.h"

namespace Desktop {

class LayersPanel final : public StripsPanel {
    Q_OBJECT

public:
    LayersPanel(Models& models, QWidget* parent);

private:
    [[nodiscard]] Strip* makeStrip(int place, QWidget* parent) override;
    void refresh();

    int selectedForEdit_ = 0; // the place that was brought into view last
};

} // namespace Desktop
