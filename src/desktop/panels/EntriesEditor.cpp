#include "desktop/panels/EntriesEditor.h"

#include "desktop/Palette.h"
#include "desktop/models/ActionTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/FunctionForm.h"
#include "desktop/panels/ListChooser.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace Desktop {

EntriesEditor::EntriesEditor(Models& models, const QString& thing, QWidget* parent) : QWidget(parent), models_(models) {
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(grid(1));
    auto* const head = new QHBoxLayout;
    head->setSpacing(grid(1));
    chooser_ = new ListChooser(tr("function"), tr(" of the %1").arg(thing), tr("nothing"), this);
    connect(chooser_, &ListChooser::chosen, this, [this] {
        models_.edits.endOfGesture();
        showAll();
    });
    connect(chooser_, &ListChooser::asked, this, [this](ListWork work) {
        std::size_t place = chooser_->place();
        doWork(work, entries_, place, [] { return Entry{}; });
        chooser_->setPlace(place);
        showAll();
        models_.edits.alone([this] { emit edited(); });
    });
    head->addWidget(chooser_, 1);
    keepSending_ = new QCheckBox(tr("keep sending"), this);
    keepSending_->setAccessibleName(tr("keep sending while the %1 is held").arg(thing));
    keepSending_->setStatusTip(tr("Goes on doing what it does going down, while it is held"));
    connect(keepSending_, &QCheckBox::clicked, this,
            [this](bool on) { models_.edits.alone([&] { change([on](Entry& entry) { entry.keepSending = on; }); }); });
    all->addLayout(head);
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(grid(3));
    const auto column = [&](const QString& title, FunctionForm*& form, const QString& role, QWidget* beside) {
        auto* const box = new QVBoxLayout;
        auto* const top = new QHBoxLayout;
        auto* const label = new QLabel(title, this);
        label->setObjectName("PanelTitle");
        top->addWidget(label);
        top->addStretch(1);
        if (beside != nullptr) {
            top->addWidget(beside);
        }
        box->addLayout(top);
        form = new FunctionForm(models, role, this);
        box->addWidget(form);
        box->addStretch(1);
        columns->addLayout(box, 1);
    };
    column(tr("Down"), down_, tr("when the %1 goes down").arg(thing), keepSending_);
    column(tr("Up"), up_, tr("when the %1 comes up").arg(thing), nullptr);
    connect(down_, &FunctionForm::edited, this,
            [this] { change([this](Entry& entry) { entry.down = down_->function(); }); });
    connect(up_, &FunctionForm::edited, this, [this] { change([this](Entry& entry) { entry.up = up_->function(); }); });
    all->addLayout(columns);
    showAll();
}

void EntriesEditor::setEntries(const std::vector<Entry>& entries) {
    entries_ = entries;
    showAll();
}

void EntriesEditor::startOver() {
    chooser_->setPlace(0);
    models_.edits.endOfGesture();
}

void EntriesEditor::takeFocus() {
    down_->setFocus(Qt::TabFocusReason);
}

void EntriesEditor::change(const std::function<void(Entry&)>& work) {
    if (entries_.empty()) {
        entries_.emplace_back();
    }
    work(entries_[chooser_->place()]);
    showAll();
    emit edited();
}

void EntriesEditor::showAll() {
    QStringList texts;
    for (const Entry& entry : entries_) {
        QStringList parts;
        if (entry.down) {
            parts << longTextOf(*entry.down);
        }
        if (entry.up) {
            parts << tr("up: %1").arg(longTextOf(*entry.up));
        }
        texts << (parts.isEmpty() ? tr("nothing yet") : parts.join(", "));
    }
    chooser_->showThings(texts);
    const Entry entry = entries_.empty() ? Entry{} : entries_[chooser_->place()];
    down_->setFunction(entry.down);
    up_->setFunction(entry.up);
    keepSending_->setChecked(entry.keepSending);
}

} // namespace Desktop
