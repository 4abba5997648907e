#include "desktop/widgets/ComputerKeyboard.h"

#include "desktop/Palette.h"
#include "desktop/widgets/DrawnKeys.h"
#include "values/Key.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStatusTipEvent>
#include <algorithm>
#include <limits>
#include <utility>

namespace Desktop {

ComputerKeyboard::ComputerKeyboard(QWidget* parent) : Instrument(parent) {
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

std::vector<std::uint32_t> ComputerKeyboard::codes() {
    std::vector<std::uint32_t> all;
    for (const DrawnKey& key : drawnKeys()) {
        all.push_back(key.code);
    }
    return all;
}

QSize ComputerKeyboard::sizeHint() const {
    const double unitHint = grid(10);
    return {static_cast<int>(drawnColumns * unitHint), static_cast<int>(drawnRows * unitHint)};
}

QSize ComputerKeyboard::minimumSizeHint() const {
    return sizeHint() * 0.62;
}

QSizeF ComputerKeyboard::unit() const {
    constexpr double tallest = 1.4; // of its width
    constexpr double flattest = 0.75;
    const double wide = std::min(width() / drawnColumns, height() / drawnRows / flattest);
    return {wide, std::min(height() / drawnRows, wide * tallest)};
}

QRectF ComputerKeyboard::rectOf(std::uint32_t code) const {
    const QSizeF u = unit();
    const double left = (width() - drawnColumns * u.width()) / 2;
    const double top = (height() - drawnRows * u.height()) / 2;
    for (const DrawnKey& key : drawnKeys()) {
        if (key.code == code) {
            return QRectF(left + key.x * u.width(), top + key.y * u.height(), key.width * u.width(), u.height())
                .adjusted(1.5, 1.5, -1.5, -1.5);
        }
    }
    return {};
}

std::uint32_t ComputerKeyboard::codeAt(const QPointF& point) const {
    for (const DrawnKey& key : drawnKeys()) {
        if (rectOf(key.code).contains(point)) {
            return key.code;
        }
    }
    return 0;
}

void ComputerKeyboard::setFaces(std::map<std::uint32_t, Face> faces) {
    faces_ = std::move(faces);
    update();
}

void ComputerKeyboard::setDown(std::uint32_t code, bool down) {
    if (down) {
        down_.insert(code);
    } else {
        down_.erase(code);
    }
    update(rectOf(code).toAlignedRect().adjusted(-1, -1, 1, 1));
}

void ComputerKeyboard::clearDown() {
    down_.clear();
    update();
}

void ComputerKeyboard::select(std::uint32_t code) {
    selected_ = code;
    announce();
    update();
}

QString ComputerKeyboard::valueText() const {
    const auto face = faces_.find(selected_);
    return QString::fromStdString(Key(selected_).getName()) +
           (face == faces_.end() || face->second.help.isEmpty() ? QString() : ": " + face->second.help);
}

void ComputerKeyboard::paintEvent(QPaintEvent* event) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double u = unit().height();
    QFont small = font();
    small.setPixelSize(std::clamp(static_cast<int>(std::min(u * 0.27, unit().width() * 0.31)), 7, grid(4)));
    QFont large = font();
    large.setPixelSize(std::clamp(static_cast<int>(std::min(u * 0.32, (unit().width() - 7) / 2.35)), 7, grid(5)));
    constexpr int leastBold = 8; // pixels: below, bold letters run into each other
    large.setWeight(large.pixelSize() >= leastBold ? QFont::DemiBold : QFont::Normal);
    const QFontMetricsF largeMetrics(large);
    const QFontMetricsF smallMetrics(small);
    QFont narrow = small; // before it is cut
    narrow.setStretch(QFont::Condensed);
    for (const DrawnKey& key : drawnKeys()) {
        const QRectF body = rectOf(key.code);
        if (!body.toAlignedRect().intersects(event->rect())) {
            continue;
        }
        const auto found = faces_.find(key.code);
        const Face none;
        const Face& face = found == faces_.end() ? none : found->second;
        const bool down = down_.contains(key.code);
        const QColor accent = face.colour.isValid() ? face.colour : p.amber;
        painter.setPen(QPen(key.code == selected_ && hasFocus() ? p.amber : p.line, 1));
        painter.setBrush(down ? accent : (face.action.isEmpty() ? p.panel : p.raised));
        painter.drawRoundedRect(body, 3, 3);
        const QRectF inner = body.adjusted(unit().width() * 0.1, u * 0.06, -u * 0.06, -u * 0.06);
        painter.setFont(small);
        painter.setPen(down ? p.onAccent : p.dim);
        painter.drawText(inner, Qt::AlignLeft | Qt::AlignTop,
                         face.legend.isEmpty() ? keyCaption(key.code) : face.legend);
        if (!face.action.isEmpty()) {
            // What is longer than a note's name gets smaller letters, and two lines, before it is cut.
            const bool fits = largeMetrics.horizontalAdvance(face.action) <= body.width() - 4;
            painter.setPen(down ? p.onAccent : p.text);
            const QRectF place = body.adjusted(1, std::max(u * 0.32, u * 0.06 + smallMetrics.ascent()), -1, -u * 0.08);
            const auto gap = face.action.lastIndexOf(' ');
            const bool inTwo = !fits && gap > 0 && smallMetrics.horizontalAdvance(face.action) > place.width() &&
                               2 * smallMetrics.height() <= place.height() + 1;
            const QString first = inTwo ? face.action.left(gap) : face.action;
            const QString second = inTwo ? face.action.mid(gap + 1) : QString();
            const bool isLong =
                std::max(smallMetrics.horizontalAdvance(first), smallMetrics.horizontalAdvance(second)) > place.width();
            painter.setFont(fits ? large : (isLong ? narrow : small));
            const QFontMetricsF metrics(painter.font());
            const auto elided = [&](const QString& text) {
                return metrics.elidedText(text, Qt::ElideRight, place.width() + 1);
            };
            painter.drawText(place, Qt::AlignCenter, inTwo ? elided(first) + '\n' + elided(second) : elided(first));
            if (!down && face.colour.isValid()) {
                painter.setPen(Qt::NoPen);
                painter.setBrush(face.colour);
                const double stripe = std::clamp(u * 0.08, 2.0, 4.0);
                painter.drawRoundedRect(QRectF(body.left() + 1, body.bottom() - stripe - 0.5, body.width() - 2, stripe),
                                        1.5, 1.5);
            }
        }
    }
    paintRing(painter);
}

bool ComputerKeyboard::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        return true; // the help line says it
    }
    if (event->type() == QEvent::Leave) {
        hovered_ = 0;
    }
    return Instrument::event(event);
}

void ComputerKeyboard::mouseMoveEvent(QMouseEvent* event) {
    const std::uint32_t code = codeAt(event->position());
    if (code == hovered_) {
        return;
    }
    hovered_ = code;
    const auto face = faces_.find(code);
    QString text;
    if (code != 0) {
        text = QString::fromStdString(Key(code).getName()) + "   " +
               (face == faces_.end() || face->second.help.isEmpty() ? tr("does nothing") : face->second.help);
    }
    QStatusTipEvent tip(text.isEmpty() ? statusTip() : text);
    QCoreApplication::sendEvent(this, &tip);
}

void ComputerKeyboard::mousePressEvent(QMouseEvent* event) {
    if (const std::uint32_t code = codeAt(event->position()); code != 0 && event->button() == Qt::LeftButton) {
        select(code);
        emit chosen(code);
    }
}

void ComputerKeyboard::mouseDoubleClickEvent(QMouseEvent* event) {
    if (const std::uint32_t code = codeAt(event->position()); code != 0 && event->button() == Qt::LeftButton) {
        emit activated(code);
    }
}

void ComputerKeyboard::contextMenuEvent(QContextMenuEvent* event) {
    const std::uint32_t code = event->reason() == QContextMenuEvent::Keyboard ? selected_ : codeAt(event->pos());
    if (code != 0) {
        select(code);
        emit menuAsked(code, event->globalPos());
    }
}

// To the nearest key that lies in that direction.
void ComputerKeyboard::step(QPointF direction) {
    const QPointF from = rectOf(selected_).center();
    double best = std::numeric_limits<double>::max();
    std::uint32_t next = selected_;
    for (const DrawnKey& key : drawnKeys()) {
        const QPointF way = rectOf(key.code).center() - from;
        const double along = QPointF::dotProduct(way, direction);
        const double across = std::abs(way.x() * direction.y()) + std::abs(way.y() * direction.x());
        if (along > 2 && along + across * 2 < best) {
            best = along + across * 2;
            next = key.code;
        }
    }
    select(next);
    emit chosen(next);
}

void ComputerKeyboard::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
        return step({-1, 0});
    case Qt::Key_Right:
        return step({1, 0});
    case Qt::Key_Up:
        return step({0, -1});
    case Qt::Key_Down:
        return step({0, 1});
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_F2:
        emit activated(selected_);
        return;
    default:
        Instrument::keyPressEvent(event);
    }
}

} // namespace Desktop
