// A range of notes as a bar over a keyboard: its ends are dragged.
#pragma once

#include "desktop/widgets/Instrument.h"

#include <QColor>

namespace Desktop {

class RangeBar final : public Instrument {
    Q_OBJECT

public:
    explicit RangeBar(QWidget* parent);
    void setRange(int low, int high); // 0..127, inclusive
    void setColour(const QColor& colour);
    void setNote(int note); // one that sounds in it; -1: none
    [[nodiscard]] int low() const { return low_; }
    [[nodiscard]] int high() const { return high_; }
    [[nodiscard]] QString valueText() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    void moved(int low, int high);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Part { none, low, high, whole };
    [[nodiscard]] int noteAt(double x) const;
    [[nodiscard]] double leftOf(int note) const;
    void moveTo(int low, int high);

    int low_ = 0;
    int high_ = 127;
    int note_ = -1;
    Part held_ = Part::none;
    int grip_ = 0; // the note under the pointer when the whole was taken
    QColor colour_;
};

} // namespace Desktop
