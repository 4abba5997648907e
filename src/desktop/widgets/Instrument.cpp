#include "desktop/widgets/Instrument.h"

#include "desktop/Palette.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QTimerEvent>
#include <algorithm>

namespace Desktop {

namespace {

constexpr int pauseMilliseconds = 800; // longer than it takes a key to repeat

class InstrumentAccess final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit InstrumentAccess(Instrument* instrument)
        : QAccessibleWidget(instrument, instrument->range().exists ? QAccessible::Slider : QAccessible::Graphic),
          instrument_(instrument) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Value) {
            return instrument_->valueText();
        }
        return kind == QAccessible::Description || kind == QAccessible::Help ? instrument_->statusTip()
                                                                             : QAccessibleWidget::text(kind);
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface && instrument_->range().exists) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return instrument_->range().value; }
    void setCurrentValue(const QVariant& value) override {
        instrument_->setValueByUser(value.toInt());
        emit instrument_->letGo();
    }
    QVariant maximumValue() const override { return std::max(instrument_->range().min, instrument_->range().max); }
    QVariant minimumValue() const override { return std::min(instrument_->range().min, instrument_->range().max); }
    QVariant minimumStepSize() const override { return instrument_->range().step; }

private:
    Instrument* instrument_;
};

QAccessibleInterface* makeAccess(const QString&, QObject* object) {
    auto* const instrument = qobject_cast<Instrument*>(object);
    return instrument != nullptr ? new InstrumentAccess(instrument) : nullptr;
}

// Where the toolkit gives the chosen item as the name of a list that opens, its own name is told as its description.
class ListNames final : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Show) {
            auto* const list = qobject_cast<QComboBox*>(object);
            if (list != nullptr && list->accessibleDescription() != list->accessibleName()) {
                list->setAccessibleDescription(list->accessibleName());
            }
        }
        return false;
    }
};

} // namespace

void installAccessibility() {
    QAccessible::installFactory(makeAccess);
    qApp->installEventFilter(new ListNames(qApp));
}

Instrument::Instrument(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::TabFocus);
}

void Instrument::describe(const QString& name, const QString& help) {
    if (accessibleName() != name) {
        setAccessibleName(name);
    }
    if (statusTip() != help) {
        setStatusTip(help);
    }
}

void Instrument::announce() {
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, range().exists ? QVariant(range().value) : QVariant(valueText()));
        QAccessible::updateAccessibility(&event);
    }
}

void Instrument::paintRing(QPainter& painter) const {
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Desktop::palette().amber, 1.5));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
    }
}

void Instrument::stepped() {
    pause_.start(pauseMilliseconds, this);
}

void Instrument::endSteps() {
    if (pause_.isActive()) {
        pause_.stop();
        emit letGo();
    }
}

void Instrument::timerEvent(QTimerEvent* event) {
    if (event->timerId() == pause_.timerId()) {
        endSteps();
    }
}

void Instrument::keyReleaseEvent(QKeyEvent* event) {
    if (!event->isAutoRepeat()) {
        endSteps();
    }
    QWidget::keyReleaseEvent(event);
}

void Instrument::leaveEvent(QEvent* event) {
    endSteps();
    QWidget::leaveEvent(event);
}

void Instrument::hideEvent(QHideEvent* event) {
    endSteps();
    QWidget::hideEvent(event);
}

void Instrument::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
}

void Instrument::focusOutEvent(QFocusEvent* event) {
    endSteps();
    QWidget::focusOutEvent(event);
    update();
}

} // namespace Desktop
