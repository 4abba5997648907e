#include "desktop/widgets/MenuButton.h"

#include "desktop/Palette.h"

#include <QFontMetrics>
#include <QPolygonF>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <algorithm>

namespace Desktop {

namespace {

int edge() {
    return grid(2);
}

int arrowWidth() {
    return grid(4);
}

} // namespace

MenuButton::MenuButton(const QString& name, const QString& help, QMenu* menu, QWidget* parent) : QToolButton(parent) {
    setObjectName("Flat");
    setAccessibleName(name);
    setStatusTip(help);
    setMenu(menu);
    setPopupMode(InstantPopup);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

void MenuButton::setValue(const QString& value) {
    if (value != value_) {
        value_ = value;
        setText(value);
        setAccessibleDescription(figure_.isEmpty() ? value_ : figure_ + " " + value_);
        updateGeometry();
        update();
    }
}

void MenuButton::setFigure(const QString& figure) {
    if (figure != figure_) {
        figure_ = figure;
        setAccessibleDescription(figure_ + " " + value_);
        updateGeometry();
        update();
    }
}

void MenuButton::setWidths(int least, int most) {
    least_ = least;
    most_ = most;
    updateGeometry();
}

int MenuButton::figureWidth() const {
    return figure_.isEmpty() ? 0 : QFontMetrics(figureFont()).horizontalAdvance(figure_) + edge();
}

QSize MenuButton::sizeHint() const {
    ensurePolished();
    const int wanted = 2 * edge() + figureWidth() + fontMetrics().horizontalAdvance(value_) + 2 + arrowWidth();
    return {std::clamp(wanted, grid(least_), grid(most_)), QToolButton::sizeHint().height()};
}

QSize MenuButton::minimumSizeHint() const {
    return {std::min(sizeHint().width(), grid(least_)), sizeHint().height()};
}

void MenuButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    const Palette& p = Desktop::palette();
    QRect room = rect().adjusted(edge(), 0, -edge(), 0);
    if (!figure_.isEmpty()) {
        painter.setFont(figureFont());
        painter.setPen(p.amber);
        painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft, figure_);
        room.setLeft(room.left() + figureWidth());
    }
    painter.setFont(font());
    painter.setPen(isEnabled() ? p.text : p.faint);
    const QRect words = room.adjusted(0, 0, -arrowWidth(), 0);
    painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(value_, Qt::ElideRight, words.width()));
    const double size = grid(1);
    const QPointF tip(room.right() - size, rect().center().y() + size * 0.8);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(p.dim);
    painter.drawPolygon(QPolygonF{{tip.x() - size, tip.y() - size * 1.2}, {tip.x() + size, tip.y() - size * 1.2}, tip});
}

} // namespace Desktop
