// The panel of the zones.
#pragma once

#include "desktop/panels/PanelFrame.h"

namespace Desktop {

class NumberField;

class ZonesPanel final : public PanelFrame {
    Q_OBJECT

public:
    ZonesPanel(Models& models, QWidget* parent);

private:
    void refresh();
    // Which keys and layers the zone belongs to, in words.
    [[nodiscard]] QString usersOf(int zone);

    QWidget* content_;
    QString shape_;
    std::map<int, NumberField*> fields_;
    std::map<int, NumberField*> numbers_;
    std::map<int, QToolButton*> names_;
    std::map<int, QLabel*> users_;
};

} // namespace Desktop
