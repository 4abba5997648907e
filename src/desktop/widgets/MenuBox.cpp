#include "desktop/widgets/MenuBox.h"

namespace Desktop {

QComboBox* makeMenu(const QString& name, const QString& help, QWidget* parent) {
    auto* const menu = new QComboBox(parent);
    menu->setAccessibleName(name);
    menu->setStatusTip(help);
    menu->setFocusPolicy(Qt::StrongFocus);
    constexpr int letters = 8;
    menu->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    menu->setMinimumContentsLength(letters);
    return menu;
}

} // namespace Desktop
