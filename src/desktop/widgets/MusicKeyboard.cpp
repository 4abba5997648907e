#include "desktop/widgets/MusicKeyboard.h"

#include "desktop/Palette.h"
#include "desktop/models/NumberTexts.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTouchEvent>
#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace Desktop {

namespace {

constexpr int mouseFinger = -1;
constexpr int keyFinger = -2;
constexpr double blackHeight = 0.62;
constexpr double blackWidth = 0.62; // of a white key

bool isBlack(int note) {
    constexpr bool black[]{false, true, false, true, false, false, true, false, true, false, true, false};
    return black[note % 12];
}

// White keys below it, counted from the lowest.
int whitesBelow(int note) {
    constexpr int inOctave[]{0, 1, 1, 2, 2, 3, 4, 4, 5, 5, 6, 6};
    const auto count = [&](int n) { return n / 12 * 7 + inOctave[n % 12]; };
    return count(note) - count(MusicKeyboard::lowest);
}

const int whites = whitesBelow(MusicKeyboard::highest) + 1;

} // namespace

MusicKeyboard::MusicKeyboard(QWidget* parent) : Instrument(parent) {
    setAttribute(Qt::WA_AcceptTouchEvents);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize MusicKeyboard::sizeHint() const {
    return {grid(200), grid(30)};
}

QSize MusicKeyboard::minimumSizeHint() const {
    return {grid(100), grid(14)};
}

QRectF MusicKeyboard::rectOf(int note) const {
    const double white = static_cast<double>(width()) / whites;
    const double left = whitesBelow(note) * white;
    if (!isBlack(note)) {
        return {left, 0, white, static_cast<double>(height())};
    }
    return {left - white * blackWidth / 2, 0, white * blackWidth, height() * blackHeight};
}

int MusicKeyboard::noteAt(const QPointF& point) const {
    if (!rect().contains(point.toPoint())) {
        return -1;
    }
    int found = -1;
    for (int note = lowest; note <= highest; ++note) {
        if (rectOf(note).contains(point)) {
            if (isBlack(note)) {
                return note;
            }
            found = note;
        }
    }
    return found;
}

int MusicKeyboard::velocityAt(const QPointF& point, int note) const {
    const QRectF key = rectOf(note);
    const double depth = (point.y() - key.top()) / std::max(1.0, key.height() - 1);
    return std::clamp(static_cast<int>(std::lround(20 + depth * 107)), 1, 127);
}

void MusicKeyboard::setLit(int note, const QColor& colour) {
    if (colour.isValid()) {
        lit_[note] = colour;
    } else {
        lit_.erase(note);
    }
    if (note >= lowest && note <= highest) {
        update(rectOf(note).toAlignedRect());
    }
}

void MusicKeyboard::clearLit() {
    lit_.clear();
    update();
}

void MusicKeyboard::setLetters(std::map<int, QString> letters) {
    letters_ = std::move(letters);
    update();
}

QString MusicKeyboard::valueText() const {
    QStringList names;
    for (const auto& [note, colour] : lit_) {
        names << noteText(note);
    }
    return names.join(' ');
}

void MusicKeyboard::paintEvent(QPaintEvent* event) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont letterFont = font();
    // Below the black keys, above the names of the octaves.
    const double room = (1 - blackHeight) * height();
    letterFont.setPixelSize(std::clamp(static_cast<int>(std::min(rectOf(60).width() * 0.52, room * 0.4)), 7, grid(4)));
    QFont blackFont = letterFont; // has less room
    blackFont.setPixelSize(std::max(7, letterFont.pixelSize() * 4 / 5));
    QFont octaveFont = letterFont;
    octaveFont.setPixelSize(std::max(7, letterFont.pixelSize() * 3 / 4));
    const auto paintKey = [&](int note) {
        const QRectF key = rectOf(note);
        if (!key.toAlignedRect().intersects(event->rect())) {
            return;
        }
        const bool black = isBlack(note);
        const auto found = lit_.find(note);
        const bool on = found != lit_.end();
        painter.setPen(QPen(black ? p.panel : p.line, black ? 1 : 0.6));
        painter.setBrush(on ? found->second : (black ? p.black : p.white));
        const QRectF body = key.adjusted(0.5, -4, -0.5, -1);
        painter.drawRoundedRect(body, 3, 3);
        painter.setPen(on ? p.onAccent : (black ? p.white : p.onWhite));
        if (const auto letter = letters_.find(note); letter != letters_.end()) {
            painter.setFont(black ? blackFont : letterFont);
            const double line = letterFont.pixelSize() * 1.3;
            painter.drawText(QRectF(key.left(), key.bottom() - line * (black ? 1.1 : 1.8) - 2, key.width(), line),
                             Qt::AlignCenter, letter->second);
        }
        if (note % 12 == 0) {
            painter.setFont(octaveFont);
            const double line = octaveFont.pixelSize() * 1.3 + 2;
            painter.drawText(QRectF(key.left() - 4, key.bottom() - line, key.width() + 8, line), Qt::AlignCenter,
                             noteText(note));
        }
        if (hasFocus() && note == mark_) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(p.amber, 2));
            painter.drawRoundedRect(body.adjusted(1, 1, -1, -1), 3, 3);
        }
    };
    for (int note = lowest; note <= highest; ++note) {
        if (!isBlack(note)) {
            paintKey(note);
        }
    }
    for (int note = lowest; note <= highest; ++note) {
        if (isBlack(note)) {
            paintKey(note);
        }
    }
    paintRing(painter);
}

void MusicKeyboard::point(int finger, int note, int velocity) {
    const auto held = fingers_.find(finger);
    const int before = held == fingers_.end() ? -1 : held->second;
    if (note == before) {
        return;
    }
    if (before >= 0) {
        fingers_.erase(finger);
        if (std::none_of(fingers_.begin(), fingers_.end(), [&](const auto& each) { return each.second == before; })) {
            emit lifted(before);
        }
    }
    if (note >= 0) {
        fingers_[finger] = note;
        emit struck(note, velocity);
    }
}

void MusicKeyboard::releaseAll() {
    while (!fingers_.empty()) {
        point(fingers_.begin()->first, -1, 0);
    }
}

bool MusicKeyboard::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        for (const QEventPoint& touch : static_cast<QTouchEvent*>(event)->points()) {
            const bool up = touch.state() == QEventPoint::Released;
            const int note = up ? -1 : noteAt(touch.position());
            point(touch.id(), note, note < 0 ? 0 : velocityAt(touch.position(), note));
        }
        event->accept();
        return true;
    case QEvent::TouchCancel:
    case QEvent::WindowDeactivate:
        releaseAll();
        break;
    default:
        break;
    }
    return Instrument::event(event);
}

void MusicKeyboard::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const int note = noteAt(event->position());
        point(mouseFinger, note, note < 0 ? 0 : velocityAt(event->position(), note));
    }
}

void MusicKeyboard::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) {
        const int note = noteAt(event->position());
        point(mouseFinger, note, note < 0 ? 0 : velocityAt(event->position(), note));
    }
}

void MusicKeyboard::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        point(mouseFinger, -1, 0);
    }
}

void MusicKeyboard::keyPressEvent(QKeyEvent* event) {
    const auto moveBy = [this](int steps) {
        mark_ = std::clamp(mark_ + steps, lowest, highest);
        update();
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return moveBy(-1);
    case Qt::Key_Right:
        return moveBy(1);
    case Qt::Key_PageDown:
    case Qt::Key_Down:
        return moveBy(-12);
    case Qt::Key_PageUp:
    case Qt::Key_Up:
        return moveBy(12);
    case Qt::Key_Space:
    case Qt::Key_Return:
        if (!event->isAutoRepeat()) {
            point(keyFinger, mark_, 100);
        }
        return;
    default:
        Instrument::keyPressEvent(event);
    }
}

void MusicKeyboard::keyReleaseEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Space || event->key() == Qt::Key_Return) && !event->isAutoRepeat()) {
        point(keyFinger, -1, 0);
    } else {
        Instrument::keyReleaseEvent(event);
    }
}

void MusicKeyboard::hideEvent(QHideEvent* event) {
    releaseAll();
    Instrument::hideEvent(event);
}

} // namespace Desktop
