#include "desktop/widgets/Knob.h"

#include "desktop/Palette.h"

#include <QtMath>
#include <algorithm>
#include <cmath>

namespace Desktop {

namespace {
constexpr double startAngle = 225; // degrees, counted as the toolkit does: anticlockwise from three o'clock
constexpr double sweep = 270;
} // namespace

QSize Knob::sizeHint() const {
    return {grid(14), grid(14)};
}

QSize Knob::minimumSizeHint() const {
    return {grid(9), grid(9)};
}

void Knob::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double size = std::min(width(), height()) - 4;
    const double stroke = std::max(3.0, size / 11);
    const QRectF ring(width() / 2.0 - size / 2 + stroke / 2, height() / 2.0 - size / 2 + stroke / 2, size - stroke,
                      size - stroke);
    constexpr int sixteenths = 16;
    painter.setPen(QPen(p.sunk, stroke, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, static_cast<int>(startAngle * sixteenths), static_cast<int>(-sweep * sixteenths));
    painter.setPen(QPen(isEnabled() ? p.amber : p.faint, stroke, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, static_cast<int>(startAngle * sixteenths), static_cast<int>(-sweep * portion() * sixteenths));
    const double inset = stroke * 1.4;
    const QRectF cap = ring.adjusted(inset, inset, -inset, -inset);
    painter.setPen(QPen(p.line, 1));
    painter.setBrush(p.raised);
    painter.drawEllipse(cap);
    const double angle = qDegreesToRadians(startAngle - sweep * portion());
    const QPointF direction(std::cos(angle), -std::sin(angle));
    painter.setPen(QPen(p.text, 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(ring.center() + direction * cap.width() * 0.22, ring.center() + direction * cap.width() * 0.45);
    paintRing(painter);
}

} // namespace Desktop
