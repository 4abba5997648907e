#include "desktop/panels/StripsPanel.h"

#include "desktop/Palette.h"
#include "desktop/widgets/ColumnArea.h"
#include "desktop/widgets/EmptyState.h"

namespace Desktop {

StripsPanel::StripsPanel(Gui::Panel panel, const QString& title, const QString& help, int narrowest, Adding adding,
                         Models& models, QWidget* parent)
    : PanelFrame(panel, title, help, models, parent) {
    QToolButton* const add = makeButton("+", adding.name, adding.help, this);
    connect(add, &QToolButton::clicked, this, adding.work);
    addHeadWidget(add);
    area_ = new ColumnArea(this);
    content_ = new QWidget(area_);
    column_ = new QVBoxLayout(content_);
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(grid(1));
    column_->addStretch(1);
    area_->setWidget(content_);
    area_->setMinimumWidth(narrowest);
    body().addWidget(area_, 1);
    if (!adding.whenEmpty.isEmpty()) {
        empty_ = new EmptyState(adding.whenEmpty, this);
        body().addWidget(empty_, 1);
        connect(empty_->addButton(adding.name, tr("%1: the first").arg(adding.name), adding.help),
                &QPushButton::clicked, this, adding.work);
    }
}

void StripsPanel::showStrips(std::size_t count) {
    while (strips_.size() > count) {
        strips_.back()->hide();
        strips_.back()->deleteLater(); // it may be the one that asked
        strips_.pop_back();
    }
    while (strips_.size() < count) {
        Strip* const strip = makeStrip(static_cast<int>(strips_.size()), content_);
        column_->insertWidget(column_->count() - 1, strip);
        strips_.push_back(strip);
    }
    for (Strip* const strip : strips_) {
        strip->refresh();
        strip->setVisible(true);
    }
    if (empty_ != nullptr) {
        area_->setVisible(count > 0);
        empty_->setVisible(count == 0);
    }
    showPresetName();
}

void StripsPanel::bringIntoView(int place) {
    if (place >= 0 && static_cast<std::size_t>(place) < strips_.size()) {
        content_->adjustSize(); // strips may have come just now
        area_->ensureWidgetVisible(strips_[static_cast<std::size_t>(place)], 0, grid(1));
    }
}

} // namespace Desktop
