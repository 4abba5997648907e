// An instrument for one number: drag, wheel, keys, typing, double click.
#pragma once

#include "desktop/widgets/Instrument.h"

#include <QLineEdit>
#include <QPointF>
#include <optional>

namespace Desktop {

// Dragging moves the value by a part of the range for each pixel, finely with Shift. The wheel and the arrow keys move
// it by a step, Page Up and Page Down by ten, Home and End to the ends. F2 or Enter types a number. A double click
// gives the resting value. min above max: the instrument is upside down.
class ValueInstrument : public Instrument {
    Q_OBJECT

public:
    explicit ValueInstrument(QWidget* parent);

    void setRange(int min, int max);
    void setResting(std::optional<int> value) { resting_ = value; }
    // How far a turn of the wheel goes; without it, by a part of the range.
    void setWheelStep(int step) { wheelStep_ = step; }
    // From outside: nobody is told.
    void setValue(int value);
    [[nodiscard]] int value() const { return value_; }
    // Pixels for the whole range while dragging; how far one step of the wheel goes.
    static void setSensitivity(int sensitivity);

    [[nodiscard]] Range range() const override { return {true, value_, min_, max_, 1}; }
    [[nodiscard]] QString valueText() const override { return QString::number(value_); }
    void setValueByUser(int value) override;

    // A field in which the value is typed, over the instrument.
    void beginTyping();

signals:
    void moved(int value); // by the user
    void pressed();
    void menuAsked(QPoint globalPosition);

protected:
    // 0 at min, 1 at max.
    [[nodiscard]] double portion() const;
    // The direction in which a drag raises the value: up, or to the right.
    [[nodiscard]] virtual bool isHorizontal() const { return false; }
    [[nodiscard]] virtual int travel() const { return 160; }

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void moveTo(int value); // a step of a gesture
    void moveBy(int steps);

    int min_ = 0;
    int max_ = 127;
    int value_ = 0;
    std::optional<int> resting_;
    bool dragging_ = false;
    QPointF last_;
    double exact_ = 0;  // while dragging, between whole values
    int wheelStep_ = 0; // 0: by the range
    int wheel_ = 0;     // what is left of it below one step
};

} // namespace Desktop
