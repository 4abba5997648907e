// The panel of the oscillators.
#pragma once

#include "desktop/panels/StripsPanel.h"

namespace Desktop {

class OscillatorsPanel final : public StripsPanel {
    Q_OBJECT

public:
    OscillatorsPanel(Models& models, QWidget* parent);

private:
    [[nodiscard]] Strip* makeStrip(int place, QWidget* parent) override;
    void refresh();
};

} // namespace Desktop
