#include "desktop/widgets/WaveView.h"

#include "desktop/Palette.h"

#include <QPainterPath>
#include <algorithm>
#include <utility>

namespace Desktop {

WaveView::WaveView(QWidget* parent) : Instrument(parent) {
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void WaveView::setWave(std::function<double(double)> wave, int low, int high) {
    wave_ = std::move(wave);
    low_ = low;
    high_ = high;
    update();
}

void WaveView::setRunning(bool on) {
    running_ = on;
    update();
}

void WaveView::setValue(int value) {
    value_ = value;
    if (running_) {
        update();
    }
}

QString WaveView::valueText() const {
    return running_ ? QString::number(value_) : tr("stopped");
}

QSize WaveView::sizeHint() const {
    return {grid(50), grid(12)};
}

void WaveView::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(4, 6, -4, -6);
    const auto yOf = [&](double part) { return area.bottom() - part * area.height(); };
    painter.setPen(QPen(p.line, 1));
    painter.drawLine(QPointF(area.left(), yOf(0.5)), QPointF(area.right(), yOf(0.5)));
    if (wave_) {
        QPainterPath path;
        constexpr int periods = 2;
        const int steps = std::max(2, static_cast<int>(area.width()));
        for (int i = 0; i <= steps; ++i) {
            const double at = static_cast<double>(i) / steps;
            const double phase = at * periods - static_cast<int>(at * periods);
            const QPointF here(area.left() + at * area.width(), yOf(std::clamp(wave_(phase), 0.0, 1.0)));
            i == 0 ? path.moveTo(here) : path.lineTo(here);
        }
        painter.setPen(QPen(running_ ? p.amber : p.dim, 1.6));
        painter.drawPath(path);
    }
    if (running_ && low_ != high_) {
        const double part = std::clamp(static_cast<double>(value_ - low_) / (high_ - low_), 0.0, 1.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(p.text);
        painter.drawEllipse(QPointF(area.left() + area.width() * 0.5, yOf(part)), 4, 4);
    }
    painter.setFont(figureFont(0.8));
    painter.setPen(p.dim);
    painter.drawText(area, Qt::AlignRight | Qt::AlignBottom, QString::number(low_));
    painter.drawText(area, Qt::AlignRight | Qt::AlignTop, QString::number(high_));
}

} // namespace Desktop
