#include "desktop/panels/ListButtons.h"

#include "desktop/Palette.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/panels/PanelFrame.h"

#include <QHBoxLayout>

namespace Desktop {

ListButtons::ListButtons(const QString& thing, const QString& role, QWidget* parent) : QWidget(parent) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(grid(1));
    const auto button = [&](const QString& text, const QString& name, const QString& help, ListWork work) {
        QToolButton* const made = PanelFrame::makeButton(text, name + role, help, this);
        connect(made, &QToolButton::clicked, this, [this, work] { emit asked(work); });
        if (text.size() == 1) {
            made->setFixedWidth(grid(7));
        }
        row->addWidget(made);
        return made;
    };
    const QString capital = capitalised(thing);
    add_ = button("+", tr("Add a %1").arg(thing), tr("One more, behind the one that is chosen"), ListWork::add);
    copy_ = button(tr("copy"), tr("Copy the %1").arg(thing), tr("One more like the one that is chosen, to be changed"),
                   ListWork::copy);
    earlier_ = button("↑", tr("%1 earlier").arg(capital), tr("The chosen one changes places with the one before it"),
                      ListWork::earlier);
    later_ = button("↓", tr("%1 later").arg(capital), tr("The chosen one changes places with the one behind it"),
                    ListWork::later);
    remove_ = button("×", tr("Remove the %1").arg(thing), tr("Takes the chosen one away"), ListWork::remove);
    showState(0, 0, false);
}

void ListButtons::showState(std::size_t place, std::size_t count, bool canCopy) {
    copy_->setEnabled(canCopy && count > 0);
    earlier_->setEnabled(place > 0 && place < count);
    later_->setEnabled(place + 1 < count);
    remove_->setEnabled(count > 0);
}

} // namespace Desktop
