#include "desktop/widgets/MenuBox.h"

#include <QFontMetrics>
#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace Desktop {

void MenuBox::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const QRect room = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, room.width());
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

MenuBox* makeMenu(const QString& name, const QString& help, QWidget* parent) {
    auto* const menu = new MenuBox(parent);
    menu->setAccessibleName(name);
    menu->setStatusTip(help);
    menu->setFocusPolicy(Qt::StrongFocus);
    constexpr int letters = 8;
    menu->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    menu->setMinimumContentsLength(letters);
    return menu;
}

} // namespace Desktop
