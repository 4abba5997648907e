// How a joystick stands: six axes and its buttons.
#pragma once

#include "desktop/models/JoystickModel.h"
#include "desktop/widgets/Instrument.h"

namespace Desktop {

class JoystickView final : public Instrument {
    Q_OBJECT

public:
    JoystickView(JoystickModel& model, QWidget* parent);
    void setJoystick(int joystick);
    [[nodiscard]] QString valueText() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    JoystickModel& model_;
    int joystick_ = 0;
};

} // namespace Desktop
