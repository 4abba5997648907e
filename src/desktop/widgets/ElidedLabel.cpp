#include "desktop/widgets/ElidedLabel.h"

#include "desktop/Palette.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace Desktop {

QSize ElidedLabel::minimumSizeHint() const {
    const QSize whole = QLabel::minimumSizeHint();
    return {std::min(whole.width(), grid(10)), whole.height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect room = contentsRect();
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
}

} // namespace Desktop
