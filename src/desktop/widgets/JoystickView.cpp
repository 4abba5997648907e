#include "desktop/widgets/JoystickView.h"

#include "desktop/Palette.h"

namespace Desktop {

namespace {
constexpr int greatest = 65535;
constexpr const char* axisNames[]{"X", "Y", "Z", "U", "V", "R"};
} // namespace

JoystickView::JoystickView(JoystickModel& model, QWidget* parent) : Instrument(parent), model_(model) {
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&model_, &JoystickModel::moved, this, QOverload<>::of(&QWidget::update));
}

void JoystickView::setJoystick(int joystick) {
    joystick_ = joystick;
    update();
}

QString JoystickView::valueText() const {
    QStringList parts;
    for (int axis = 0; axis < JoystickModel::axes; ++axis) {
        parts << QStringLiteral("%1 %2%").arg(axisNames[axis]).arg(model_.position(joystick_, axis) * 100 / greatest);
    }
    return parts.join(", ");
}

QSize JoystickView::sizeHint() const {
    return {grid(80), grid(27)};
}

void JoystickView::paintEvent(QPaintEvent*) {
    const Palette& p = Desktop::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double row = grid(4);
    const double left = grid(4);
    const double length = width() * 0.5 - left;
    painter.setFont(font());
    for (int axis = 0; axis < JoystickModel::axes; ++axis) {
        const double top = axis * row * 1.1;
        painter.setPen(p.dim);
        painter.drawText(QRectF(0, top, left, row), Qt::AlignVCenter, QString::fromLatin1(axisNames[axis]));
        painter.setPen(Qt::NoPen);
        painter.setBrush(p.sunk);
        painter.drawRoundedRect(QRectF(left, top + row * 0.3, length, row * 0.4), 3, 3);
        const double at = left + length * model_.position(joystick_, axis) / greatest;
        painter.setBrush(p.amber);
        painter.drawRoundedRect(QRectF(at - 3, top + row * 0.15, 6, row * 0.7), 3, 3);
    }
    const double cell = std::min((width() * 0.46) / 8, height() / 4.0);
    const double from = width() * 0.54;
    painter.setFont(figureFont(0.75));
    for (int button = 0; button < JoystickModel::buttons; ++button) {
        const QRectF place(from + button % 8 * cell + 1, button / 8 * cell + 1, cell - 2, cell - 2);
        const bool down = model_.isDown(joystick_, button);
        painter.setPen(QPen(p.line, 1));
        painter.setBrush(down ? p.green : p.raised);
        painter.drawRoundedRect(place, 3, 3);
        painter.setPen(down ? p.onAccent : p.dim);
        painter.drawText(place, Qt::AlignCenter, QString::number(button + 1));
    }
}

} // namespace Desktop
