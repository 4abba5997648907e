#include "desktop/widgets/WaveView.h"

#include "desktop/Palette.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <utility>

namespace Desktop {

namespace {
constexpr int periods = 2; // that are drawn
}

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
        follow();
        update();
    }
}

// Only values arrive: the point goes forward along the wave to the next place that has the value.
void WaveView::follow() {
    constexpr int steps = 256;
    constexpr double near = 1.0 / 64;
    const double part = portion();
    double best = near;
    double found = phase_;
    for (int i = 0; i < steps; ++i) {
        const double phase = std::fmod(phase_ + static_cast<double>(i) / steps, 1.0);
        if (const double off = std::abs(wave_(phase) - part); off < best) {
            best = off;
            found = phase;
            if (off < near / 4) {
                break;
            }
        }
    }
    phase_ = found;
}

double WaveView::portion() const {
    return low_ == high_ ? 0 : std::clamp(static_cast<double>(value_ - low_) / (high_ - low_), 0.0, 1.0);
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
        painter.setPen(Qt::NoPen);
        painter.setBrush(p.text);
        painter.drawEllipse(QPointF(area.left() + area.width() * phase_ / periods, yOf(portion())), 4, 4);
    }
    painter.setFont(figureFont(0.8));
    painter.setPen(p.dim);
    painter.drawText(area, Qt::AlignRight | Qt::AlignBottom, QString::number(low_));
    painter.drawText(area, Qt::AlignRight | Qt::AlignTop, QString::number(high_));
}

} // namespace Desktop
