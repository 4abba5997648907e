// A fader, upright or lying.
#pragma once

#include "desktop/widgets/ValueInstrument.h"

namespace Desktop {

class Fader final : public ValueInstrument {
    Q_OBJECT

public:
    Fader(Qt::Orientation orientation, QWidget* parent);
    void setColour(const QColor& colour);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool isHorizontal() const override { return orientation_ == Qt::Horizontal; }
    [[nodiscard]] int travel() const override;

private:
    Qt::Orientation orientation_;
    QColor colour_;
};

} // namespace Desktop
