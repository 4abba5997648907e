#include "desktop/panels/MidiInputPanel.h"

#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "midiinput/MidiInputMessageManager.h"
#include "midiinput/TranslationFactory.h"

#include <QHeaderView>
#include <QPushButton>
#include <algorithm>
#include <sstream>

namespace Desktop {

using namespace Backend::MidiInput;
using Backend::MidiEngine::QelMidiMessage;

namespace {

class KindFiller final : public TranslationManagement::TranslationEnumerator {
public:
    explicit KindFiller(QComboBox& box) : box_(box) {}
    void addTranslation(std::string_view keyword, std::string_view displayName) override {
        box_.addItem(QString::fromUtf8(displayName.data(), static_cast<qsizetype>(displayName.size())),
                     QString::fromUtf8(keyword.data(), static_cast<qsizetype>(keyword.size())));
    }

private:
    QComboBox& box_;
};

} // namespace

MidiInputPanel::MidiInputPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::midiInput, tr("MIDI in"), tr("What becomes of messages from your MIDI devices"), models,
                 parent) {
    learn_ = makeButton(tr("learn"), tr("Learn an incoming message"),
                        tr("The next message that arrives becomes a line of the table"), this);
    learn_->setCheckable(true);
    addHeadWidget(learn_);
    table_ = new QTreeWidget(this);
    table_->setHeaderLabels({tr("message"), tr("what it does")});
    table_->setRootIsDecorated(false);
    table_->setAccessibleName(tr("Incoming messages and what they do"));
    table_->setStatusTip(tr("Choose a message to edit what it does; messages that are not here go to the layers"));
    table_->setFocusPolicy(Qt::TabFocus);
    table_->setMinimumSize(grid(70), grid(16));
    body().addWidget(table_, 2);
    auto* const row = new QHBoxLayout;
    kind_ = new QComboBox(this);
    kind_->setAccessibleName(tr("Kind of translation to add"));
    kind_->setStatusTip(tr("What the message is to do, too"));
    kind_->setFocusPolicy(Qt::TabFocus);
    KindFiller filler(*kind_);
    TranslationManagement::enumerateTranslations(filler);
    row->addWidget(kind_, 1);
    const auto button = [&](const QString& text, const QString& name, const QString& help) {
        auto* const made = new QPushButton(text, this);
        made->setAccessibleName(name);
        made->setStatusTip(help);
        made->setFocusPolicy(Qt::TabFocus);
        row->addWidget(made);
        return made;
    };
    auto* const add =
        button(tr("add"), tr("Add the translation"), tr("Adds it, with its settings as they are at first"));
    auto* const apply = button(tr("apply"), tr("Apply the translations"), tr("Takes over what was written below"));
    body().addLayout(row);
    text_ = new QPlainTextEdit(this);
    text_->setAccessibleName(tr("Translations of the chosen message"));
    text_->setStatusTip(tr("One translation a line, with its condition and its settings, as it is stored"));
    text_->setFont(figureFont(0.95));
    text_->setTabChangesFocus(true);
    body().addWidget(text_, 1);
    result_ = new QLabel(this);
    result_->setObjectName("Dim");
    result_->setWordWrap(true);
    body().addWidget(result_);
    connect(table_, &QTreeWidget::itemSelectionChanged, this, &MidiInputPanel::choose);
    connect(apply, &QPushButton::clicked, this, &MidiInputPanel::store);
    connect(add, &QPushButton::clicked, this, [this] {
        const auto translation =
            TranslationManagement::createDefaultTranslation(kind_->currentData().toString().toStdString());
        if (translation && chosen_) {
            MidiEventConfiguration one(*chosen_);
            one.translations.push_back(translation->clone());
            text_->appendPlainText(MidiInputModel::textOf(one));
            store();
        }
    });
    connect(text_, &QPlainTextEdit::textChanged, this, &MidiInputPanel::tryOut);
    connect(&models.midiInput, &Model::changed, this, &MidiInputPanel::refresh);
    connect(&models.playing, &PlayingModel::received, this, &MidiInputPanel::learned);
    setPresets({"MIDI Input Presets", [this] { return this->models().midiInput.map().presetName; },
                [this](const std::string& name) {
                    this->models().ask([name](Backend::QelIF& qel) { qel.loadMidiInputPreset(name); });
                },
                [this](const std::string& name) {
                    this->models().qel().getMidiInputMessageManager().postSavePreset(name, {});
                },
                [this](const std::string& name) {
                    this->models().qel().getMidiInputMessageManager().postDeletePreset(name);
                }});
    refresh();
}

void MidiInputPanel::refresh() {
    events_.clear();
    for (const auto& [event, configuration] : models().midiInput.map()) {
        events_.push_back(event);
    }
    if (chosen_ && std::find(events_.begin(), events_.end(), *chosen_) == events_.end()) {
        events_.push_back(*chosen_);
    }
    std::sort(events_.begin(), events_.end());
    const QSignalBlocker quiet(table_);
    table_->clear();
    for (const MidiEvent& event : events_) {
        const MidiEventConfiguration* const configuration = models().midiInput.map().find(event);
        auto* const item = new QTreeWidgetItem(
            table_,
            {models().midiInput.textOf(event),
             configuration != nullptr ? MidiInputModel::textOf(*configuration).replace('\n', "   ") : QString()});
        item->setSelected(chosen_ && event == *chosen_);
    }
    table_->resizeColumnToContents(0);
    showPresetName();
    choose();
}

void MidiInputPanel::choose() {
    const QList<QTreeWidgetItem*> selected = table_->selectedItems();
    text_->setEnabled(!selected.isEmpty());
    if (selected.isEmpty()) {
        return;
    }
    chosen_ = events_[static_cast<std::size_t>(table_->indexOfTopLevelItem(selected.front()))];
    const MidiEventConfiguration* const configuration = models().midiInput.map().find(*chosen_);
    const QString text = configuration != nullptr ? MidiInputModel::textOf(*configuration) : QString();
    if (text != text_->toPlainText()) {
        text_->setPlainText(text);
    }
}

void MidiInputPanel::learned(const QelMidiMessage& message) {
    if (!learn_->isChecked() || static_cast<int>(message.getMessageType()) >= 0xF8) {
        return;
    }
    learn_->setChecked(false);
    chosen_ = MidiEvent{MidiEvent::ANY, MidiEvent::ANY,
                        Backend::MidiEngine::MidiMessage(message.getMessageType(), message.getD1())};
    refresh();
}

void MidiInputPanel::store() {
    QString fault;
    auto translations = MidiInputModel::translationsIn(text_->toPlainText(), fault);
    if (!chosen_ || !translations) {
        result_->setText(fault);
        return;
    }
    MidiEventConfiguration configuration(*chosen_);
    configuration.translations = std::move(*translations);
    configuration.setQel(&models().qel());
    models().midiInput.put(configuration);
}

// What the chosen message, with its second byte at 100, would send.
void MidiInputPanel::tryOut() {
    QString fault;
    const auto translations = MidiInputModel::translationsIn(text_->toPlainText(), fault);
    if (!chosen_ || !translations) {
        result_->setText(fault);
        return;
    }
    constexpr std::int8_t example = 100;
    const Backend::MidiEngine::MidiMessage bare(chosen_->message.getMessageType(), chosen_->message.getD1(), example,
                                                0);
    const QelMidiMessage incoming(bare.getMessageType(), bare.getD1(), bare.getD2(), 0, -1, -1, 0, Backend::noTicks);
    QStringList sent;
    for (const auto& translation : *translations) {
        if (!translation->getCondition().holdsFor(bare)) {
            sent << tr("(its condition does not hold)");
        } else if (const auto message = translation->getMidiMessage(incoming)) {
            sent << QString::fromStdString(message->getMidiMessage().getEventNameWithCcAndNoteDetail()) + " " +
                        QString::number(message->getD2());
        } else {
            sent << QString::fromStdString(translation->getName());
        }
    }
    result_->setText(tr("%1, %2 → %3")
                         .arg(QString::fromStdString(bare.getEventNameWithCcAndNoteDetail()))
                         .arg(example)
                         .arg(sent.isEmpty() ? tr("nothing") : sent.join("; ")));
}

} // namespace Desktop
