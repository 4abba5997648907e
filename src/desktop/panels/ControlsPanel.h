// The panel of the on-screen controls: a grid of faders, knobs and numbers.
#pragma once

#include "desktop/panels/PanelFrame.h"
#include "input/Control.h"

#include <QGridLayout>
#include <QLabel>
#include <map>

namespace Desktop {

class ControlEditor;
class ValueInstrument;

class ControlsPanel final : public PanelFrame {
    Q_OBJECT

public:
    ControlsPanel(Models& models, QWidget* parent);

    void focusControl(const Cell& cell); // (-1, -1): the selected one
    [[nodiscard]] ValueInstrument* instrumentAt(const Cell& cell) const;

private:
    void refresh();
    void addControl(const Backend::Controls::Control& control, int tallest);
    void controlMenu(const Cell& cell, const QPoint& where);
    void learn(const Cell& cell);
    void moved(const Cell& cell, int value);

    QWidget* surface_ = nullptr;
    QWidget* holder_;
    QLabel* line_;
    QToolButton* edit_;
    ControlEditor* editor_;
    std::map<Cell, ValueInstrument*> instruments_;
    std::map<Cell, QLabel*> values_;
    QString shape_; // of the grid as it was built
    Cell learning_;
};

} // namespace Desktop
