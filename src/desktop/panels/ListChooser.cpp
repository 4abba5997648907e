#include "desktop/panels/ListChooser.h"

#include "desktop/Palette.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/widgets/MenuBox.h"

#include <QHBoxLayout>
#include <algorithm>
#include <utility>

namespace Desktop {

ListChooser::ListChooser(const QString& thing, const QString& role, QString none, QWidget* parent)
    : QWidget(parent), none_(std::move(none)) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(grid(1));
    menu_ = makeMenu(tr("Which %1").arg(thing) + role, tr("Which one is edited; they are done in this order"), this);
    row->addWidget(menu_, 1);
    buttons_ = new ListButtons(thing, role, this);
    row->addWidget(buttons_);
    connect(menu_, &QComboBox::activated, this, [this](int index) {
        place_ = static_cast<std::size_t>(index);
        emit chosen();
    });
    connect(buttons_, &ListButtons::asked, this, &ListChooser::asked);
}

void ListChooser::showThings(const QStringList& things) {
    const auto count = static_cast<std::size_t>(things.size());
    place_ = count == 0 ? 0 : std::min(place_, count - 1);
    menu_->clear();
    for (qsizetype i = 0; i < things.size(); ++i) {
        menu_->addItem(count == 1 ? things[i] : tr("%1 of %2: %3").arg(i + 1).arg(count).arg(things[i]));
    }
    if (count == 0) {
        menu_->addItem(none_);
    }
    menu_->setEnabled(count > 0);
    menu_->setCurrentIndex(static_cast<int>(place_));
    buttons_->showState(place_, count, true);
}

} // namespace Desktop
