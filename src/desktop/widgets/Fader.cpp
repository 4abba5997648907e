#include "desktop/widgets/Fader.h"

#include "desktop/Palette.h"

namespace Desktop {

namespace {
int thumbLength() {
    return grid(3);
}
} // namespace

Fader::Fader(Qt::Orientation orientation, QWidget* parent) : ValueInstrument(parent), orientation_(orientation) {}

void Fader::setColour(const QColor& colour) {
    colour_ = colour;
    update();
}

QSize Fader::sizeHint() const {
    const QSize upright(grid(9), grid(26));
    return isHorizontal() ? upright.transposed() : upright;
}

QSize Fader::minimumSizeHint() const {
    const QSize upright(grid(7), grid(12));
    return isHorizontal() ? upright.transposed() : upright;
}

int Fader::travel() const {
    return (isHorizontal() ? width() : height()) - thumbLength();
}

void Fader::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double length = travel();
    const double thumb = thumbLength();
    const double at = portion() * length;
    const double groove = grid(2);
    const double across = isHorizontal() ? height() : width();
    const double side = (across - groove) / 2;
    QRectF whole;
    QRectF filled;
    QRectF handle;
    const double wide = std::min<double>(across - 2, grid(8));
    const double edge = (across - wide) / 2;
    if (isHorizontal()) {
        whole = {thumb / 2, side, length, groove};
        filled = {thumb / 2, side, at, groove};
        handle = {at, edge, thumb, wide};
    } else {
        whole = {side, thumb / 2, groove, length};
        filled = {side, thumb / 2 + length - at, groove, at};
        handle = {edge, length - at, wide, thumb};
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(p.sunk);
    painter.drawRoundedRect(whole, 3, 3);
    painter.setBrush(isEnabled() ? (colour_.isValid() ? colour_ : p.amber) : p.faint);
    painter.drawRoundedRect(filled, 3, 3);
    painter.setBrush(p.raised);
    painter.setPen(QPen(p.dim, 1.2));
    painter.drawRoundedRect(handle.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    paintRing(painter);
}

} // namespace Desktop
