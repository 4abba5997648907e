#include "desktop/widgets/ChoiceField.h"

#include "desktop/Palette.h"
#include "desktop/widgets/MenuBox.h"

#include <QHBoxLayout>
#include <algorithm>
#include <utility>

namespace Desktop {

ChoiceField::ChoiceField(std::vector<Choice> choices, QWidget* parent) : QWidget(parent), choices_(std::move(choices)) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(grid(1));
    menu_ = makeMenu({}, {}, this);
    for (const Choice& each : choices_) {
        menu_->addItem(each.text);
    }
    number_ = new NumberField(this);
    number_->setFocusPolicy(Qt::StrongFocus);
    row->addWidget(menu_, 1);
    row->addWidget(number_);
    setFocusProxy(menu_);
    connect(menu_, &QComboBox::activated, this, [this](int index) {
        if (index == shown_) {
            return; // it keeps its number
        }
        showNumber(choices_[static_cast<std::size_t>(index)].number);
        emit chosen();
        emit letGo();
    });
    connect(number_, &NumberField::moved, this, &ChoiceField::chosen);
    connect(number_, &NumberField::letGo, this, &ChoiceField::letGo);
    showNumber(0);
}

void ChoiceField::describe(const QString& name, const QString& help) {
    menu_->setAccessibleName(name);
    menu_->setStatusTip(help);
    number_->describe(tr("Number: %1").arg(name), help);
}

void ChoiceField::set(int choice, int number) {
    menu_->setCurrentIndex(choice);
    showNumber(number);
}

void ChoiceField::showNumber(int number) {
    if (menu_->currentIndex() < 0) {
        return;
    }
    shown_ = menu_->currentIndex();
    const Choice& now = choices_[static_cast<std::size_t>(menu_->currentIndex())];
    number_->setVisible(now.hasNumber);
    if (now.hasNumber) {
        number_->setText(now.written);
        number_->showValue(now.min, now.max, number);
    }
}

} // namespace Desktop
