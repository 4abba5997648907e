#include "desktop/widgets/EventList.h"

#include "desktop/Palette.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QWheelEvent>
#include <algorithm>
#include <array>

namespace Desktop {

namespace {
// Where each column ends, in parts of the width.
constexpr std::array<double, 6> columnEnds{0.12, 0.28, 0.33, 0.64, 0.72, 1.0};
} // namespace

EventList::EventList(EventsModel& events, QWidget* parent) : Instrument(parent), events_(events), bar_(this) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    bar_.setAccessibleName(tr("Events, earlier and later"));
    connect(&bar_, &QScrollBar::valueChanged, this, QOverload<>::of(&QWidget::update));
    connect(&events_, &EventsModel::added, this, [this](int) {
        if (!paused_) {
            adjust(bar_.value() == bar_.maximum());
        }
    });
    connect(&events_, &Model::changed, this, [this] { adjust(true); });
}

void EventList::setPaused(bool on) {
    paused_ = on;
    held_ = on ? events_.events() : std::deque<ListedEvent>{};
    adjust(true);
}

void EventList::setLargeFont(bool on) {
    large_ = on;
    adjust(true);
}

QSize EventList::sizeHint() const {
    return {grid(110), grid(40)};
}

QSize EventList::minimumSizeHint() const {
    return {grid(60), grid(16)};
}

int EventList::rowHeight() const {
    return QFontMetrics(figureFont(large_ ? 1.4 : 1.0)).height() + grid();
}

int EventList::visibleRows() const {
    return std::max(1, (height() - rowHeight()) / rowHeight());
}

void EventList::adjust(bool follow) {
    const int count = static_cast<int>((paused_ ? held_ : events_.events()).size());
    bar_.setRange(0, std::max(0, count - visibleRows()));
    bar_.setPageStep(visibleRows());
    bar_.setVisible(bar_.maximum() > 0);
    if (follow) {
        bar_.setValue(bar_.maximum());
    }
    update();
}

void EventList::resizeEvent(QResizeEvent*) {
    const int wide = bar_.sizeHint().width();
    bar_.setGeometry(width() - wide, 0, wide, height());
    adjust(bar_.value() == bar_.maximum());
}

void EventList::wheelEvent(QWheelEvent* event) {
    bar_.setValue(bar_.value() - event->angleDelta().y() / 40);
    event->accept();
}

void EventList::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Up:
        return bar_.setValue(bar_.value() - 1);
    case Qt::Key_Down:
        return bar_.setValue(bar_.value() + 1);
    case Qt::Key_PageUp:
        return bar_.setValue(bar_.value() - visibleRows());
    case Qt::Key_PageDown:
        return bar_.setValue(bar_.value() + visibleRows());
    case Qt::Key_Home:
        return bar_.setValue(0);
    case Qt::Key_End:
        return bar_.setValue(bar_.maximum());
    default:
        Instrument::keyPressEvent(event);
    }
}

QString EventList::textOf(int row) const {
    const auto& list = paused_ ? held_ : events_.events();
    if (row < 0 || static_cast<std::size_t>(row) >= list.size()) {
        return {};
    }
    const ListedEvent& event = list[static_cast<std::size_t>(row)];
    return QStringList{
        EventsModel::timeOf(event), events_.portOf(event),  QString::number(event.message.getChannel() + 1),
        events_.nameOf(event),      events_.valueOf(event), events_.wayOf(event)}
        .join('\t');
}

QString EventList::wholeText() const {
    QString text;
    const auto size = static_cast<int>((paused_ ? held_ : events_.events()).size());
    for (int row = 0; row < size; ++row) {
        text += textOf(row) + '\n';
    }
    return text;
}

QString EventList::valueText() const {
    const auto size = static_cast<int>((paused_ ? held_ : events_.events()).size());
    return size == 0 ? tr("no events") : textOf(size - 1).replace('\t', ' ');
}

void EventList::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    const double scale = large_ ? 1.4 : 1.0;
    const QFont figures = figureFont(scale * 0.95);
    QFont words = font();
    if (words.pixelSize() > 0) {
        words.setPixelSize(static_cast<int>(words.pixelSize() * scale));
    }
    const int row = rowHeight();
    const double wide = width() - bar_.width() - grid(2);
    const auto cell = [&](int column, double top) {
        const double left =
            (column == 0 ? 0 : columnEnds[static_cast<std::size_t>(column) - 1]) * wide + grid(column == 5 ? 4 : 2);
        return QRectF(left, top, columnEnds[static_cast<std::size_t>(column)] * wide - left + grid(1), row);
    };
    const auto draw = [&](int column, double top, const QString& text, const QFont& face, const QColor& colour,
                          Qt::Alignment side = Qt::AlignLeft) {
        painter.setFont(face);
        painter.setPen(colour);
        const QRectF place = cell(column, top);
        painter.drawText(place, static_cast<int>(side | Qt::AlignVCenter),
                         QFontMetricsF(face).elidedText(text, Qt::ElideRight, place.width()));
    };
    QFont caption = font();
    caption.setPixelSize(std::max(8, QFontMetrics(font()).height() * 5 / 8));
    const QString captions[]{tr("TIME"), tr("PORT"), tr("CH"), tr("EVENT"), tr("VALUE"), tr("WAY")};
    for (int column = 0; column < 6; ++column) {
        draw(column, 0, captions[column], caption, p.dim, column == 4 ? Qt::AlignRight : Qt::AlignLeft);
    }
    const auto& list = paused_ ? held_ : events_.events();
    if (list.empty()) {
        painter.setFont(font());
        painter.setPen(p.dim);
        painter.drawText(rect().adjusted(0, row, 0, 0), Qt::AlignCenter,
                         tr("Play something: what goes out is listed here."));
    }
    const int first = bar_.value();
    const int last = std::min(static_cast<int>(list.size()), first + visibleRows() + 1);
    for (int i = first; i < last; ++i) {
        const ListedEvent& event = list[static_cast<std::size_t>(i)];
        const double top = (i - first + 1) * row;
        if (i % 2 == 0) {
            painter.fillRect(QRectF(0, top, wide + grid(2), row), p.raised);
        }
        const bool off = event.message.isNoteOff();
        painter.fillRect(QRectF(0, top + 3, 3, row - 6),
                         event.incoming ? p.rose : p.inTurn(event.message.getChannel()));
        const bool hasChannel = event.message.getStatus() != event.message.getMessageType() ||
                                static_cast<int>(event.message.getMessageType()) < 0xF0;
        draw(0, top, EventsModel::timeOf(event), figures, p.dim);
        draw(1, top, events_.portOf(event), words, p.dim);
        draw(2, top, hasChannel ? QString::number(event.message.getChannel() + 1) : QString(), figures, p.text);
        draw(3, top, events_.nameOf(event), words, off ? p.dim : p.text);
        draw(4, top, events_.valueOf(event), figures, off ? p.dim : p.text, Qt::AlignRight);
        draw(5, top, events_.wayOf(event), words, p.dim);
    }
    paintRing(painter);
}

} // namespace Desktop
