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
    void addControl(const Backend::Controls::Control& control);
    [[nodiscard]] QWidget* makeCaption(const Backend::Controls::Control& control, QWidget* box); // null: none
    void edit(const Cell& cell);
    void showEdited(); // which one it is
    void controlMenu(const Cell& cell, const QPoint& where);
    void moved(const Cell& cell, int value);

    QWidget* surface_ = nullptr;
    QWidget* holder_;
    QLabel* line_;
    QToolButton* edit_;
    ControlEditor* editor_;
    std::map<Cell, ValueInstrument*> instruments_;
    std::map<Cell, QLabel*> values_;
    std::map<Cell, QToolButton*> captions_; // while they are edited
    QString shape_;                         // of the grid as it was built
};

} // namespace Desktop
