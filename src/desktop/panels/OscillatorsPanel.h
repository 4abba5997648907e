// The panel of the oscillators.
#pragma once

#include "desktop/panels/PanelFrame.h"

#include <vector>

namespace Desktop {

class OscillatorStrip;

class OscillatorsPanel final : public PanelFrame {
    Q_OBJECT

public:
    OscillatorsPanel(Models& models, QWidget* parent);

private:
    void refresh();

    QWidget* content_;
    QVBoxLayout* strips_;
    std::vector<OscillatorStrip*> list_;
};

} // namespace Desktop
