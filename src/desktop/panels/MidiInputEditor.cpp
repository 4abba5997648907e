#include "desktop/panels/MidiInputEditor.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/panels/ListButtons.h"
#include "desktop/panels/MessageFields.h"
#include "desktop/panels/PanelFrame.h"
#include "desktop/panels/TranslationForm.h"
#include "desktop/panels/TryOut.h"

#include <QHBoxLayout>
#include <algorithm>

namespace Desktop {

using namespace Backend::MidiInput;

MidiInputEditor::MidiInputEditor(Models& models, QWidget* parent) : QWidget(parent), models_(models) {
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(grid(2), 0, grid(2), 0);
    all->setSpacing(grid(1));
    const auto head = [&](const QString& caption, QWidget* buttons) {
        auto* const row = new QHBoxLayout;
        auto* const title = new QLabel(caption, this);
        title->setObjectName("PanelTitle");
        row->addWidget(title);
        row->addStretch(1);
        row->addWidget(buttons);
        all->addLayout(row);
    };
    QToolButton* const remove = PanelFrame::makeButton("×", tr("Remove the message"),
                                                       tr("Takes it out of the table: it goes to the layers"), this);
    remove->setFixedWidth(grid(7));
    connect(remove, &QToolButton::clicked, this, [this] { models_.midiInput.remove(*event_); });
    head(tr("Message"), remove);
    message_ = new MessageFields(models_, MessageFields::Shows::event, tr("of the message"), this);
    connect(message_, &MessageFields::edited, this, &MidiInputEditor::moveMessage);
    all->addWidget(message_);
    buttons_ = new ListButtons(tr("translation"), {}, this);
    connect(buttons_, &ListButtons::asked, this, [this](ListWork work) {
        change(tr("the list of translations"), [&](Configuration::Translations& list) {
            doWork(work, list, place_, &TranslationForm::fresh, [](const auto& each) { return each->clone(); });
        });
    });
    head(tr("What it does"), buttons_);
    form_ = new TranslationForm(models_, this);
    connect(form_, &TranslationForm::edited, this, &MidiInputEditor::storeTranslation);
    all->addWidget(form_);
    hint_ = new QLabel(this);
    hint_->setObjectName("Dim");
    hint_->setWordWrap(true);
    all->addWidget(hint_);
    tryOut_ = new TryOut(models_, this);
    all->addSpacing(grid(2));
    all->addWidget(tryOut_);
    all->addStretch(1);
}

const MidiEventConfiguration* MidiInputEditor::now() const {
    return event_ ? models_.midiInput.map().find(*event_) : nullptr;
}

void MidiInputEditor::showMessage(const std::optional<Event>& event, std::size_t translation) {
    event_ = event;
    place_ = translation;
    const MidiEventConfiguration* const shown = now();
    if (shown == nullptr) {
        return;
    }
    const std::size_t count = shown->translations.size();
    place_ = std::min(place_, count == 0 ? 0 : count - 1);
    message_->setEvent(*event_);
    const bool isReadable = count > 0 && shown->translations[place_] != nullptr;
    form_->setVisible(isReadable);
    hint_->setVisible(!isReadable);
    if (isReadable) {
        form_->setTranslation(*shown->translations[place_], *event_);
    } else {
        hint_->setText(count == 0 ? tr("Nothing: it goes on to the layers, on the channel of the layer. + gives it "
                                       "something to do.")
                                  : tr("This translation could not be read; nothing is done in its place."));
    }
    buttons_->showState(place_, count, isReadable);
    tryOut_->setEvent(*event_);
}

void MidiInputEditor::moveMessage() {
    const Event from = *event_;
    const Event to = message_->event();
    if (from == to) {
        return;
    }
    event_ = to;
    if (!models_.midiInput.move(from, to)) {
        event_ = from;
        message_->setEvent(from);
        hint_->setText(tr("There is a line for that message already."));
        hint_->show();
    }
}

void MidiInputEditor::storeTranslation() {
    const MidiEventConfiguration* const shown = now();
    if (shown == nullptr || place_ >= shown->translations.size()) {
        return;
    }
    MidiEventConfiguration after = *shown;
    after.translations[place_] = form_->translation().clone();
    models_.midiInput.put(tr("edit what a message does"), after, true);
}

void MidiInputEditor::change(const QString& text, const std::function<void(Configuration::Translations&)>& work) {
    if (const MidiEventConfiguration* const shown = now()) {
        MidiEventConfiguration after = *shown;
        work(after.translations);
        models_.midiInput.put(text, after);
    }
}

} // namespace Desktop
