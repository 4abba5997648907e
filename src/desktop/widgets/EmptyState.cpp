#include "desktop/widgets/EmptyState.h"

#include "desktop/Palette.h"

#include <QLabel>
#include <QVBoxLayout>

namespace Desktop {

EmptyState::EmptyState(const QString& text, QWidget* parent) : QWidget(parent), buttons_(new QHBoxLayout) {
    auto* const all = new QVBoxLayout(this);
    all->setSpacing(grid(2));
    all->addStretch(1);
    auto* const label = new QLabel(text, this);
    label->setObjectName("Dim");
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    all->addWidget(label);
    buttons_->addStretch(1);
    buttons_->addStretch(1);
    all->addLayout(buttons_);
    all->addStretch(1);
}

QPushButton* EmptyState::addButton(const QString& caption, const QString& name, const QString& help) {
    auto* const button = new QPushButton(caption, this);
    button->setAccessibleName(name);
    button->setStatusTip(help);
    button->setFocusPolicy(Qt::TabFocus);
    buttons_->insertWidget(buttons_->count() - 1, button);
    return button;
}

} // namespace Desktop
