#include "desktop/widgets/ValueInstrument.h"

#include <QContextMenuEvent>
#include <QIntValidator>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace Desktop {

namespace {
constexpr int notch = 120;
constexpr double fine = 0.1;
int sensitivityInUse = 1;
} // namespace

ValueInstrument::ValueInstrument(QWidget* parent) : Instrument(parent) {}

void ValueInstrument::setSensitivity(int sensitivity) {
    sensitivityInUse = std::clamp(sensitivity, 1, 10);
}

void ValueInstrument::setRange(int min, int max) {
    min_ = min;
    max_ = max;
    setValue(value_);
}

void ValueInstrument::setValue(int value) {
    value = std::clamp(value, std::min(min_, max_), std::max(min_, max_));
    if (value != value_) {
        value_ = value;
        announce();
    }
    update();
}

void ValueInstrument::setValueByUser(int value) {
    const int before = value_;
    setValue(value);
    if (value_ != before) {
        emit moved(value_);
    }
}

double ValueInstrument::portion() const {
    return min_ == max_ ? 0 : static_cast<double>(value_ - min_) / (max_ - min_);
}

void ValueInstrument::moveTo(int value) {
    setValueByUser(value);
    stepped();
}

void ValueInstrument::moveBy(int steps) {
    moveTo(value_ + (max_ < min_ ? -steps : steps));
}

void ValueInstrument::mousePressEvent(QMouseEvent* event) {
    endSteps();
    if (event->button() == Qt::LeftButton) {
        dragging_ = true;
        last_ = event->position();
        exact_ = value_;
        emit pressed();
    }
}

void ValueInstrument::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) {
        return;
    }
    const QPointF way = event->position() - last_;
    last_ = event->position();
    const double pixels = isHorizontal() ? way.x() : -way.y();
    const double scale = event->modifiers().testFlag(Qt::ShiftModifier) ? fine : 1.0;
    exact_ += pixels * scale * sensitivityInUse * (max_ - min_) / std::max(1, travel());
    exact_ = std::clamp<double>(exact_, std::min(min_, max_), std::max(min_, max_));
    setValueByUser(static_cast<int>(std::lround(exact_)));
}

void ValueInstrument::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && dragging_) {
        dragging_ = false;
        emit letGo();
    }
}

void ValueInstrument::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    if (resting_) {
        setValueByUser(*resting_);
        emit letGo();
    } else {
        beginTyping();
    }
}

void ValueInstrument::wheelEvent(QWheelEvent* event) {
    wheel_ += event->angleDelta().y() != 0 ? event->angleDelta().y() : event->angleDelta().x();
    const int steps = wheel_ / notch;
    wheel_ -= steps * notch;
    if (steps != 0) {
        const int range = std::abs(max_ - min_);
        const bool isFine = event->modifiers().testFlag(Qt::ShiftModifier);
        const int step = wheelStep_ > 0 ? wheelStep_ : std::max(1, range / 128 * sensitivityInUse);
        moveBy(steps * (isFine ? 1 : step));
    }
    event->accept();
}

void ValueInstrument::keyPressEvent(QKeyEvent* event) {
    constexpr int page = 10;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Right:
        return moveBy(1);
    case Qt::Key_Down:
    case Qt::Key_Left:
        return moveBy(-1);
    case Qt::Key_PageUp:
        return moveBy(page);
    case Qt::Key_PageDown:
        return moveBy(-page);
    case Qt::Key_Home:
        return moveTo(min_);
    case Qt::Key_End:
        return moveTo(max_);
    case Qt::Key_F2:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return beginTyping();
    default:
        Instrument::keyPressEvent(event);
    }
}

void ValueInstrument::contextMenuEvent(QContextMenuEvent* event) {
    emit menuAsked(event->globalPos());
}

void ValueInstrument::beginTyping() {
    endSteps();
    if (findChild<QLineEdit*>() != nullptr) { // its Return comes here, too
        return;
    }
    auto* const field = new QLineEdit(QString::number(value_), this);
    field->setAccessibleName(accessibleName());
    field->setValidator(new QIntValidator(std::min(min_, max_), std::max(min_, max_), field));
    field->setAlignment(Qt::AlignCenter);
    const int height = std::min(this->height(), field->sizeHint().height());
    field->setGeometry(0, (this->height() - height) / 2, width(), height);
    field->selectAll();
    field->show();
    field->setFocus();
    connect(field, &QLineEdit::returnPressed, this, [this, field] {
        setValueByUser(field->text().toInt());
        emit letGo();
        setFocus(Qt::OtherFocusReason); // the keyboard plays again
    });
    connect(field, &QLineEdit::editingFinished, field, &QObject::deleteLater);
}

} // namespace Desktop
