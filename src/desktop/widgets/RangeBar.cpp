#include "desktop/widgets/RangeBar.h"

#include "desktop/Palette.h"
#include "desktop/models/NumberTexts.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace Desktop {

namespace {
constexpr int notes = 128;
}

RangeBar::RangeBar(QWidget* parent) : Instrument(parent) {
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void RangeBar::setRange(int low, int high) {
    low_ = low;
    high_ = high;
    announce();
    update();
}

void RangeBar::setColour(const QColor& colour) {
    colour_ = colour;
    update();
}

void RangeBar::setNote(int note) {
    note_ = note;
    update();
}

QString RangeBar::valueText() const {
    return tr("%1 to %2").arg(noteText(low_), noteText(high_));
}

QSize RangeBar::sizeHint() const {
    return {grid(60), grid(4)};
}

QSize RangeBar::minimumSizeHint() const {
    return {grid(20), grid(3)};
}

double RangeBar::leftOf(int note) const {
    return static_cast<double>(width()) * note / notes;
}

int RangeBar::noteAt(double x) const {
    return std::clamp(static_cast<int>(x * notes / std::max(1, width())), 0, notes - 1);
}

void RangeBar::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double edge = height() * 0.12;
    const QRectF whole(0, edge, width(), height() - 2 * edge);
    painter.setPen(Qt::NoPen);
    painter.setBrush(p.sunk);
    painter.drawRoundedRect(whole, 3, 3);
    const double right = leftOf(high_ + 1);
    QColor colour = colour_.isValid() ? colour_ : p.teal;
    painter.setBrush(isEnabled() ? colour : p.faint);
    painter.drawRoundedRect(QRectF(leftOf(low_), edge, std::max(2.0, right - leftOf(low_)), whole.height()), 3, 3);
    painter.setPen(QPen(p.panel, 1));
    for (int octave = 12; octave < notes; octave += 12) { // at each C
        painter.drawLine(QPointF(leftOf(octave), edge), QPointF(leftOf(octave), height() - edge));
    }
    if (note_ >= 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(p.text);
        painter.drawRect(QRectF(leftOf(note_), 0, std::max(2.0, leftOf(1)), height()));
    }
    paintRing(painter);
}

void RangeBar::moveTo(int low, int high) {
    low = std::clamp(low, 0, notes - 1);
    high = std::clamp(high, low, notes - 1);
    if (low != low_ || high != high_) {
        setRange(low, high);
        emit moved(low_, high_);
    }
}

void RangeBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const double x = event->position().x();
    const double toLow = std::abs(x - leftOf(low_));
    const double toHigh = std::abs(x - leftOf(high_ + 1));
    const double near = grid(3);
    if (std::min(toLow, toHigh) <= near || x < leftOf(low_) || x > leftOf(high_ + 1)) {
        held_ = toLow <= toHigh ? Part::low : Part::high;
    } else {
        held_ = Part::whole;
        grip_ = noteAt(x);
    }
    mouseMoveEvent(event);
}

void RangeBar::mouseMoveEvent(QMouseEvent* event) {
    const int note = noteAt(event->position().x());
    switch (held_) {
    case Part::low:
        return moveTo(std::min(note, high_), high_);
    case Part::high:
        return moveTo(low_, std::max(note, low_));
    case Part::whole: {
        const int step = std::clamp(note - grip_, -low_, notes - 1 - high_);
        grip_ += step;
        return moveTo(low_ + step, high_ + step);
    }
    case Part::none: {
        const double x = event->position().x();
        const bool end = std::min(std::abs(x - leftOf(low_)), std::abs(x - leftOf(high_ + 1))) <= grid(3);
        setCursor(end ? Qt::SizeHorCursor : Qt::ArrowCursor);
    }
    }
}

void RangeBar::mouseReleaseEvent(QMouseEvent*) {
    if (held_ != Part::none) {
        held_ = Part::none;
        emit letGo();
    }
}

void RangeBar::wheelEvent(QWheelEvent* event) {
    const int step = event->angleDelta().y() > 0 ? 1 : -1;
    const bool lowEnd =
        std::abs(event->position().x() - leftOf(low_)) < std::abs(event->position().x() - leftOf(high_));
    if (lowEnd) {
        moveTo(std::min(low_ + step, high_), high_);
    } else {
        moveTo(low_, std::max(high_ + step, low_));
    }
    stepped();
    event->accept();
}

void RangeBar::keyPressEvent(QKeyEvent* event) {
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    const auto step = [&](int by) {
        if (shift) {
            moveTo(std::min(low_ + by, high_), high_);
        } else {
            moveTo(low_, std::max(high_ + by, low_));
        }
        stepped();
    };
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        return step(-1);
    case Qt::Key_Right:
    case Qt::Key_Up:
        return step(1);
    case Qt::Key_PageDown:
        return step(-12);
    case Qt::Key_PageUp:
        return step(12);
    default:
        Instrument::keyPressEvent(event);
    }
}

} // namespace Desktop
