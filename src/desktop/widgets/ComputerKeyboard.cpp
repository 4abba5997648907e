#include "desktop/widgets/ComputerKeyboard.h"

#include "desktop/Palette.h"
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

namespace {

// In units of a key, from the left and top of the keyboard.
struct DrawnKey {
    std::uint32_t code;
    double x, y, width;
};

constexpr double columns = 22.5;
constexpr double rowCount = 6.25;

const std::vector<DrawnKey>& drawnKeys() {
    static const std::vector<DrawnKey> keys = [] {
        std::vector<DrawnKey> all;
        const auto row = [&all](double x, double y, std::initializer_list<std::pair<std::uint32_t, double>> list) {
            for (const auto& [code, width] : list) {
                if (code != 0) {
                    all.push_back({code, x, y, width});
                }
                x += width;
            }
        };
        row(0, 0, {{27, 1},  {0, 1},   {112, 1}, {113, 1}, {114, 1}, {115, 1}, {0, 0.5},  {116, 1}, {117, 1}, {118, 1},
                   {119, 1}, {0, 0.5}, {120, 1}, {121, 1}, {122, 1}, {123, 1}, {0, 0.25}, {5, 1},   {145, 1}, {19, 1}});
        row(0, 1.25, {{192, 1}, {'1', 1}, {'2', 1},  {'3', 1}, {'4', 1}, {'5', 1}, {'6', 1},  {'7', 1},
                      {'8', 1}, {'9', 1}, {'0', 1},  {189, 1}, {187, 1}, {8, 2},   {0, 0.25}, {45, 1},
                      {36, 1},  {33, 1},  {0, 0.25}, {144, 1}, {111, 1}, {106, 1}, {109, 1}});
        row(0, 2.25, {{9, 1.5}, {'Q', 1}, {'W', 1},  {'E', 1}, {'R', 1}, {'T', 1},   {'Y', 1},  {'U', 1},
                      {'I', 1}, {'O', 1}, {'P', 1},  {219, 1}, {221, 1}, {220, 1.5}, {0, 0.25}, {46, 1},
                      {35, 1},  {34, 1},  {0, 0.25}, {103, 1}, {104, 1}, {105, 1},   {107, 1}});
        row(0, 3.25,
            {{20, 1.75},
             {'A', 1},
             {'S', 1},
             {'D', 1},
             {'F', 1},
             {'G', 1},
             {'H', 1},
             {'J', 1},
             {'K', 1},
             {'L', 1},
             {186, 1},
             {222, 1},
             {13, 2.25},
             {0, 3.5},
             {100, 1},
             {101, 1},
             {102, 1}});
        row(0, 4.25,
            {{16, 2.25},
             {'Z', 1},
             {'X', 1},
             {'C', 1},
             {'V', 1},
             {'B', 1},
             {'N', 1},
             {'M', 1},
             {188, 1},
             {190, 1},
             {191, 1},
             {161, 2.75},
             {0, 1.25},
             {38, 1},
             {0, 1.25},
             {97, 1},
             {98, 1},
             {99, 1},
             {226, 1}});
        row(0, 5.25,
            {{17, 1.25},
             {91, 1.25},
             {164, 1.25},
             {32, 6.25},
             {165, 1.25},
             {92, 1.25},
             {93, 1.25},
             {225, 1.25},
             {0, 0.25},
             {37, 1},
             {40, 1},
             {39, 1},
             {0, 0.25},
             {96, 2},
             {110, 1}});
        return all;
    }();
    return keys;
}

// What stands on keys that type nothing.
QString keyCaption(std::uint32_t code) {
    switch (code) {
    case 8:
        return QStringLiteral("⌫");
    case 9:
        return QStringLiteral("⇥");
    case 13:
        return QStringLiteral("⏎");
    case 16:
    case 161:
        return QStringLiteral("⇧");
    case 17:
    case 225:
        return QStringLiteral("Ctrl");
    case 19:
        return QStringLiteral("Pau");
    case 20:
        return QStringLiteral("⇪");
    case 27:
        return QStringLiteral("Esc");
    case 32:
        return QStringLiteral("Space");
    case 33:
        return QStringLiteral("PgU");
    case 34:
        return QStringLiteral("PgD");
    case 35:
        return QStringLiteral("End");
    case 36:
        return QStringLiteral("Hom");
    case 37:
        return QStringLiteral("←");
    case 38:
        return QStringLiteral("↑");
    case 39:
        return QStringLiteral("→");
    case 40:
        return QStringLiteral("↓");
    case 45:
        return QStringLiteral("Ins");
    case 46:
        return QStringLiteral("Del");
    case 5:
        return QStringLiteral("Prt");
    case 91:
    case 92:
        return QStringLiteral("Win");
    case 93:
        return QStringLiteral("☰");
    case 144:
        return QStringLiteral("Num");
    case 145:
        return QStringLiteral("Scr");
    case 164:
    case 165:
        return QStringLiteral("Alt");
    case 186:
        return QStringLiteral(";");
    case 187:
        return QStringLiteral("=");
    case 188:
        return QStringLiteral(",");
    case 189:
        return QStringLiteral("-");
    case 190:
        return QStringLiteral(".");
    case 191:
        return QStringLiteral("/");
    case 192:
        return QStringLiteral("`");
    case 219:
        return QStringLiteral("[");
    case 220:
        return QStringLiteral("\\");
    case 221:
        return QStringLiteral("]");
    case 222:
        return QStringLiteral("'");
    case 226:
        return QStringLiteral("⏎");
    default:
        break;
    }
    QString name = QString::fromStdString(Key(code).getName());
    return name.replace("Numpad ", "");
}

} // namespace

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
    return {static_cast<int>(columns * unitHint), static_cast<int>(rowCount * unitHint)};
}

QSize ComputerKeyboard::minimumSizeHint() const {
    return sizeHint() * 0.62;
}

QSizeF ComputerKeyboard::unit() const {
    constexpr double tallest = 1.4; // of its width
    constexpr double flattest = 0.75;
    const double wide = std::min(width() / columns, height() / rowCount / flattest);
    return {wide, std::min(height() / rowCount, wide * tallest)};
}

QRectF ComputerKeyboard::rectOf(std::uint32_t code) const {
    const QSizeF u = unit();
    const double left = (width() - columns * u.width()) / 2;
    const double top = (height() - rowCount * u.height()) / 2;
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
            const bool isLong = !fits && !inTwo && smallMetrics.horizontalAdvance(face.action) > place.width();
            painter.setFont(fits ? large : (isLong ? narrow : small));
            const QFontMetricsF metrics(painter.font());
            const auto elided = [&](const QString& text) {
                return metrics.elidedText(text, Qt::ElideRight, place.width() + 1);
            };
            painter.drawText(place, Qt::AlignCenter,
                             inTwo ? elided(face.action.left(gap)) + '\n' + elided(face.action.mid(gap + 1))
                                   : elided(face.action));
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
