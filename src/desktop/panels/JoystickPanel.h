// The panel of the joysticks: how they stand, and what they do.
#pragma once

#include "desktop/panels/PanelFrame.h"

#include <QComboBox>

namespace Desktop {

class FunctionForm;
class JoystickView;
class NumberField;

class JoystickPanel final : public PanelFrame {
    Q_OBJECT

public:
    JoystickPanel(Models& models, QWidget* parent);

private:
    void refresh();
    [[nodiscard]] QString mappings(); // of the joystick that is chosen, in words
    void storeAxis();
    void storeButton();

    JoystickView* view_;
    QComboBox *joystick_, *axis_, *event_;
    NumberField *number_, *min_, *max_, *button_;
    FunctionForm *down_, *up_;
    QLabel* line_;
    bool storing_ = false;
};

} // namespace Desktop
