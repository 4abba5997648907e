#include "desktop/widgets/NumberField.h"

#include "desktop/Palette.h"

#include <QFontMetrics>
#include <algorithm>
#include <utility>

namespace Desktop {

void NumberField::setText(std::function<QString(int)> text) {
    text_ = std::move(text);
    updateGeometry();
}

void NumberField::setScale(double scale) {
    scale_ = scale;
    updateGeometry();
}

void NumberField::setFrame(bool on) {
    hasFrame_ = on;
    update();
}

void NumberField::showValue(int min, int max, int value) {
    setRange(std::min(min, value), std::max(max, value));
    setValue(value);
}

QString NumberField::valueText() const {
    return text_ ? text_(value()) : QString::number(value());
}

QSize NumberField::sizeHint() const {
    const QFontMetrics metrics(figureFont(scale_));
    int width = 0;
    for (const int each : {range().min, range().max, value()}) {
        width = std::max(width, metrics.horizontalAdvance(text_ ? text_(each) : QString::number(each)));
    }
    return {width + grid(3), std::max(metrics.height() + grid(), grid(7))};
}

// Long texts are cut before everything beside them is.
QSize NumberField::minimumSizeHint() const {
    const QSize whole = sizeHint();
    return {std::min(whole.width(), grid(18)), whole.height()};
}

void NumberField::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFrame_ ? QPen(p.line, 1) : QPen(Qt::NoPen));
    painter.setBrush(hasFrame_ ? QBrush(p.sunk) : QBrush(Qt::NoBrush));
    const double height = std::min<double>(this->height(), sizeHint().height());
    const QRectF box(0.5, (this->height() - height) / 2 + 0.5, width() - 1, height - 1);
    painter.drawRoundedRect(box, 6, 6);
    painter.setFont(figureFont(scale_));
    painter.setPen(isEnabled() ? p.text : p.faint);
    const QFontMetricsF metrics(painter.font());
    painter.drawText(box, Qt::AlignCenter, metrics.elidedText(valueText(), Qt::ElideRight, box.width() - 4));
    paintRing(painter);
}

} // namespace Desktop
