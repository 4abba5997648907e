// The panel of the joysticks: how they stand, and what they do.
#pragma once

#include "desktop/panels/PanelFrame.h"
#include "input/JoystickAxis.h"

#include <QComboBox>
#include <functional>
#include <vector>

namespace Desktop {

class EntriesEditor;
class JoystickView;
class ListChooser;
class NumberField;
class ValueEventFields;

class JoystickPanel final : public PanelFrame {
    Q_OBJECT

public:
    JoystickPanel(Models& models, QWidget* parent);

private:
    using AxisEvent = Backend::Joystick::AxisEvent;

    void makeAxis();
    void makeButtons();
    void refresh();
    void showOther();                 // another axis or button, from its first element on
    [[nodiscard]] QString mappings(); // of the joystick that is chosen, in words
    // Of the axis that is chosen: an edit of its own.
    void changeAxis(const std::function<void(std::vector<AxisEvent>&)>& work);
    // Of the event that is chosen: a part of a gesture.
    void changeAxisEvent(const std::function<void(AxisEvent&)>& work);

    QVBoxLayout* column_; // of all that is in the panel
    JoystickView* view_;
    QComboBox *joystick_, *axis_;
    ListChooser* events_;
    ValueEventFields* event_;
    NumberField *min_, *max_, *offset_, *button_;
    EntriesEditor* entries_;
    QLabel* line_;
};

} // namespace Desktop
