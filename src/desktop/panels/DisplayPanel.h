// The panel that lists events.
#pragma once

#include "desktop/panels/PanelFrame.h"

namespace Desktop {

class EventList;
class MenuButton;

class DisplayPanel final : public PanelFrame {
    Q_OBJECT

public:
    DisplayPanel(Models& models, QWidget* parent);
    [[nodiscard]] int listHeight() const; // pixels

private:
    void refresh();
    void fillFilters();

    EventList* list_;
    QToolButton* in_;
    QToolButton* out_;
    MenuButton* filter_;
    QMenu* filters_;
};

} // namespace Desktop
