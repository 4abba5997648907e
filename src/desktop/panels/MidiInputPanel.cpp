#include "desktop/panels/MidiInputPanel.h"

#include "core/FolderNames.h"
#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/ActionTexts.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/MessageFields.h"
#include "desktop/panels/TranslationForm.h"
#include "desktop/panels/TryOut.h"
#include "desktop/widgets/ColumnArea.h"
#include "desktop/widgets/EmptyState.h"
#include "midiinput/IncomingMessage.h"
#include "midiinput/MidiInputMessageManager.h"

#include <QHeaderView>
#include <algorithm>
#include <utility>

namespace Desktop {

using namespace Backend::MidiInput;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using Backend::MidiEngine::QelMidiMessage;

namespace {

constexpr int lampMilliseconds = 250;

QString whatItDoes(const MidiEventConfiguration& configuration, std::size_t place) {
    const auto& translation = configuration.translations[place];
    if (!translation) {
        return QObject::tr("(this translation could not be read)");
    }
    const auto& condition = translation->getCondition();
    const QString action = longTextOf(*translation, configuration.event);
    return condition.isOff() ? action
                             : conditionText(condition, configuration.event.message.getMessageType()) + " → " + action;
}

} // namespace

MidiInputPanel::MidiInputPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::midiInput, tr("MIDI in"), tr("What becomes of messages from your MIDI devices"), models,
                 parent) {
    learn_ = makeButton(tr("learn"), tr("Learn an incoming message"),
                        tr("The next message that arrives becomes a line of the table"), this);
    learn_->setCheckable(true);
    connect(learn_, &QToolButton::toggled, this,
            [this](bool on) { learn_->setText(on ? tr("waiting for a message…") : tr("learn")); });
    addHeadWidget(learn_);
    QToolButton* const add =
        makeButton("+", tr("Add a message"), tr("Adds a line to the table, to be made the one that is wanted"), this);
    connect(add, &QToolButton::clicked, this, &MidiInputPanel::addMessage);
    addHeadWidget(add);
    makeEmptyState();
    parts_ = new QSplitter(Qt::Horizontal, this);
    parts_->setChildrenCollapsible(false);
    makeTable();
    makeEditor();
    body().addWidget(empty_, 1);
    body().addWidget(parts_, 1);
    lamp_.setSingleShot(true);
    connect(&lamp_, &QTimer::timeout, this, [this] { setLit(std::nullopt); });
    connect(&models.midiInput, &Model::changed, this, &MidiInputPanel::refresh);
    connect(&models.ports, &Model::changed, this, &MidiInputPanel::fillTable);
    connect(&models.playing, &PlayingModel::received, this, &MidiInputPanel::light);
    connect(&models.playing, &PlayingModel::received, this, &MidiInputPanel::learned);
    setPresets(
        {Backend::FolderNames::midiInputPresets, [this] { return this->models().midiInput.map().presetName; },
         [this](const std::string& name) {
             this->models().ask([name](Backend::QelIF& qel) { qel.loadMidiInputPreset(name); });
         },
         [this](const std::string& name) {
             this->models().qel().getMidiInputMessageManager().postSavePreset(name, {});
         },
         [this](const std::string& name) { this->models().qel().getMidiInputMessageManager().postDeletePreset(name); },
         [this] {
             std::vector<PresetElement> elements;
             for (const auto& event : idsOf(this->models().midiInput.map())) {
                 elements.push_back({this->models().midiInput.textOf(event)});
             }
             return elements;
         },
         [this](const std::string& name, const std::vector<int>& places) {
             this->models().qel().getMidiInputMessageManager().postSavePreset(
                 name, idsAt(this->models().midiInput.map(), places));
         }});
    refresh();
}

void MidiInputPanel::makeEmptyState() {
    empty_ = new EmptyState(
        tr("What your MIDI devices send goes to the layers as it is.\n\n"
           "Give a message something else to do: other notes, a controller, another program, a panel, the tempo. "
           "Press learn and then a key or a knob of your device, or load a preset."),
        this);
    QPushButton* const learn = empty_->addButton(tr("learn a message"), tr("Learn the first message"),
                                                 tr("Waits for a message from your device"));
    connect(learn, &QPushButton::clicked, learn_, &QToolButton::toggle);
    connect(learn_, &QToolButton::toggled, learn,
            [learn](bool on) { learn->setText(on ? tr("waiting for a message…") : tr("learn a message")); });
    QPushButton* const add = empty_->addButton(tr("add one by hand"), tr("Add the first message"),
                                               tr("Adds a line that you make what you want"));
    connect(add, &QPushButton::clicked, this, &MidiInputPanel::addMessage);
}

void MidiInputPanel::makeTable() {
    table_ = new QTreeWidget(parts_);
    table_->setHeaderLabels({tr("message"), tr("what it does")});
    table_->setAccessibleName(tr("Incoming messages and what they do"));
    table_->setStatusTip(tr("Choose a message to edit what it does; messages that are not here go to the layers"));
    table_->setFocusPolicy(Qt::TabFocus);
    table_->setItemsExpandable(false);
    table_->setRootIsDecorated(false);
    table_->setIndentation(grid(3));
    table_->setMinimumSize(grid(50), grid(20));
    connect(table_, &QTreeWidget::currentItemChanged, this, &MidiInputPanel::chosenInTable);
}

void MidiInputPanel::makeEditor() {
    auto* const scroll = new ColumnArea(parts_);
    scroll->setMinimumHeight(grid(30));
    editor_ = new QWidget(scroll);
    auto* const all = new QVBoxLayout(editor_);
    all->setContentsMargins(grid(2), 0, grid(2), 0);
    all->setSpacing(grid(1));
    const auto head = [&](const QString& caption) {
        auto* const row = new QHBoxLayout;
        auto* const title = new QLabel(caption, editor_);
        title->setObjectName("PanelTitle");
        row->addWidget(title);
        row->addStretch(1);
        all->addLayout(row);
        return row;
    };
    const auto button = [&](QHBoxLayout* row, const QString& text, const QString& name, const QString& help,
                            const std::function<void()>& work) {
        auto* const made = makeButton(text, name, help, editor_);
        connect(made, &QToolButton::clicked, this, work);
        if (text.size() == 1) {
            made->setFixedWidth(grid(7));
        }
        row->addWidget(made);
        return made;
    };
    button(head(tr("Message")), "×", tr("Remove the message"), tr("Takes it out of the table: it goes to the layers"),
           [this] { models().midiInput.remove(*chosen_); });
    message_ = new MessageFields(models(), MessageFields::Shows::event, tr("of the message"), editor_);
    connect(message_, &MessageFields::edited, this, &MidiInputPanel::moveMessage);
    all->addWidget(message_);
    QHBoxLayout* const row = head(tr("What it does"));
    const auto swapWith = [this](std::size_t other) {
        const std::size_t place = std::exchange(place_, other);
        change(tr("order of translations"), [&](auto& list) { std::swap(list[place], list[other]); });
    };
    add_ = button(row, "+", tr("Add a translation"), tr("The message does one more thing"), [this] {
        const MidiEventConfiguration* const now = chosen();
        const std::size_t place = now == nullptr || now->translations.empty() ? 0 : place_ + 1;
        place_ = place;
        change(tr("add a translation"), [&](auto& list) {
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(place), TranslationForm::fresh());
        });
    });
    copy_ = button(row, tr("copy"), tr("Copy the translation"), tr("One more like this, to be changed"), [this] {
        const std::size_t place = place_++;
        change(tr("copy a translation"), [&](auto& list) {
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(place), list[place]->clone());
        });
    });
    earlier_ = button(row, "↑", tr("Translation earlier"), tr("It is done before the one above it"),
                      [this, swapWith] { swapWith(place_ - 1); });
    later_ = button(row, "↓", tr("Translation later"), tr("It is done behind the one below it"),
                    [this, swapWith] { swapWith(place_ + 1); });
    remove_ = button(row, "×", tr("Remove the translation"), tr("The message does this no longer"), [this] {
        const std::size_t place = place_;
        change(tr("remove a translation"),
               [&](auto& list) { list.erase(list.begin() + static_cast<std::ptrdiff_t>(place)); });
    });
    form_ = new TranslationForm(models(), editor_);
    connect(form_, &TranslationForm::edited, this, &MidiInputPanel::storeTranslation);
    all->addWidget(form_);
    hint_ = new QLabel(editor_);
    hint_->setObjectName("Dim");
    hint_->setWordWrap(true);
    all->addWidget(hint_);
    tryOut_ = new TryOut(models(), editor_);
    all->addSpacing(grid(2));
    all->addWidget(tryOut_);
    all->addStretch(1);
    scroll->setWidget(editor_);
    parts_->setStretchFactor(0, 2);
    parts_->setStretchFactor(1, 3);
}

// Beside each other where there is room for it.
void MidiInputPanel::resizeEvent(QResizeEvent* event) {
    PanelFrame::resizeEvent(event);
    const Qt::Orientation now = width() > grid(180) ? Qt::Horizontal : Qt::Vertical;
    if (now != parts_->orientation()) {
        parts_->setOrientation(now);
        const int half = (now == Qt::Horizontal ? width() : height()) / 2;
        parts_->setSizes({half, half});
    }
    fitColumns();
}

// What it does has at least half of the table.
void MidiInputPanel::fitColumns() {
    table_->resizeColumnToContents(0);
    table_->setColumnWidth(0, std::min(table_->columnWidth(0), table_->viewport()->width() / 2));
}

const MidiEventConfiguration* MidiInputPanel::chosen() {
    return chosen_ ? models().midiInput.map().find(*chosen_) : nullptr;
}

QTreeWidgetItem* MidiInputPanel::itemOf(const Event& event) const {
    const auto found = std::find(events_.begin(), events_.end(), event);
    return found == events_.end() ? nullptr : table_->topLevelItem(static_cast<int>(found - events_.begin()));
}

void MidiInputPanel::refresh() {
    fillTable();
    showPresetName();
    showChosen();
}

void MidiInputPanel::fillTable() {
    const MidiEventConfigurationMap& map = models().midiInput.map();
    std::vector<Event> events;
    std::vector<std::size_t> counts;
    for (const auto& [event, configuration] : map) {
        events.push_back(event);
    }
    std::sort(events.begin(), events.end());
    for (const Event& event : events) {
        counts.push_back(map.find(event)->translations.size());
    }
    const QSignalBlocker quiet(table_);
    if (events != events_ || counts != counts_) {
        table_->clear();
        for (const std::size_t count : counts) {
            auto* const item = new QTreeWidgetItem(table_);
            for (std::size_t i = 0; count > 1 && i < count; ++i) {
                auto* const child = new QTreeWidgetItem(item);
                child->setFirstColumnSpanned(true);
            }
            item->setExpanded(true);
        }
        events_ = std::move(events);
        counts_ = std::move(counts);
    }
    for (const Event& event : events_) {
        const MidiEventConfiguration& configuration = *map.find(event);
        const std::size_t count = configuration.translations.size();
        QTreeWidgetItem& item = *itemOf(event);
        item.setText(0, models().midiInput.textOf(event));
        item.setText(1, count == 0 ? tr("goes on to the layers")
                                   : (count == 1 ? whatItDoes(configuration, 0) : tr("%1 things").arg(count)));
        item.setToolTip(0, item.text(0));
        item.setToolTip(1, item.text(1));
        for (int i = 0; i < item.childCount(); ++i) {
            item.child(i)->setText(0, whatItDoes(configuration, static_cast<std::size_t>(i)));
        }
    }
    fitColumns();
    empty_->setVisible(events_.empty());
    parts_->setVisible(!events_.empty());
}

void MidiInputPanel::showChosen() {
    if (chosen() == nullptr) {
        chosen_ = events_.empty() ? std::nullopt : std::optional(events_.front());
        place_ = 0;
    }
    const MidiEventConfiguration* const now = chosen();
    if (now == nullptr) {
        return;
    }
    const std::size_t count = now->translations.size();
    place_ = std::min(place_, count == 0 ? 0 : count - 1);
    {
        const QSignalBlocker quiet(table_);
        QTreeWidgetItem* const item = itemOf(*chosen_);
        table_->setCurrentItem(item->childCount() > 0 ? item->child(static_cast<int>(place_)) : item);
    }
    message_->setEvent(*chosen_);
    const bool isReadable = count > 0 && now->translations[place_] != nullptr;
    form_->setVisible(isReadable);
    hint_->setVisible(!isReadable);
    if (isReadable) {
        form_->setTranslation(*now->translations[place_], *chosen_);
    } else {
        hint_->setText(count == 0 ? tr("Nothing: it goes on to the layers, on the channel of the layer. + gives it "
                                       "something to do.")
                                  : tr("This translation could not be read; nothing is done in its place."));
    }
    copy_->setEnabled(isReadable);
    earlier_->setEnabled(place_ > 0);
    later_->setEnabled(place_ + 1 < count);
    remove_->setEnabled(count > 0);
    tryOut_->setEvent(*chosen_);
}

void MidiInputPanel::chosenInTable() {
    QTreeWidgetItem* const item = table_->currentItem();
    if (item == nullptr) {
        return;
    }
    QTreeWidgetItem* const row = item->parent() != nullptr ? item->parent() : item;
    chosen_ = events_[static_cast<std::size_t>(table_->indexOfTopLevelItem(row))];
    place_ = item->parent() != nullptr ? static_cast<std::size_t>(row->indexOfChild(item)) : 0;
    models().edits.endOfGesture();
    showChosen();
}

void MidiInputPanel::learned(const QelMidiMessage& message) {
    // Clocks and active sensing arrive all the time.
    if (!learn_->isChecked() || message.getMessageType() >= MessageType::timingTick ||
        message.getMessageType() == MessageType::systemExclusive) {
        return;
    }
    learn_->setChecked(false);
    const QelMidiMessage handled = asHandled(message);
    const auto input = static_cast<std::uint8_t>(handled.getInput());
    const auto channel = static_cast<std::uint8_t>(handled.getChannel());
    open({input, hasChannel(handled.getMessageType()) ? channel : Event::ANY,
          MidiMessage(handled.getMessageType(), handled.getD1())});
}

void MidiInputPanel::light(const QelMidiMessage& message) {
    const LookUp found = models().midiInput.map().lookUp(asHandled(message));
    if (found.configuration == nullptr || !isVisible()) {
        return;
    }
    lamp_.start(lampMilliseconds);
    setLit(found.configuration->event);
}

void MidiInputPanel::setLit(const std::optional<Event>& event) {
    if (event == lit_) {
        return;
    }
    const auto paint = [this](const QVariant& colour) {
        if (QTreeWidgetItem* const item = lit_ ? itemOf(*lit_) : nullptr) {
            item->setData(0, Qt::ForegroundRole, colour);
        }
    };
    paint({});
    lit_ = event;
    paint(Desktop::palette().green);
}

void MidiInputPanel::open(const Event& event) {
    models().edits.endOfGesture();
    chosen_ = event;
    place_ = 0;
    if (models().midiInput.map().find(event) != nullptr) {
        return showChosen();
    }
    MidiEventConfiguration configuration(event);
    configuration.translations.push_back(TranslationForm::fresh());
    models().midiInput.put(tr("add an incoming message"), configuration);
}

void MidiInputPanel::addMessage() {
    // The first note from C4 upward for which there is nothing.
    constexpr int notes = 128;
    for (int i = 0; i < notes; ++i) {
        const Event event{Event::ANY, Event::ANY,
                          MidiMessage(MessageType::noteOn, static_cast<std::int8_t>((60 + i) % notes))};
        if (models().midiInput.map().find(event) == nullptr) {
            return open(event);
        }
    }
}

void MidiInputPanel::moveMessage() {
    const Event from = *chosen_;
    const Event to = message_->event();
    if (from == to) {
        return;
    }
    chosen_ = to;
    if (!models().midiInput.move(from, to)) {
        chosen_ = from;
        message_->setEvent(from);
        hint_->setText(tr("There is a line for that message already."));
        hint_->show();
    }
}

void MidiInputPanel::storeTranslation() {
    const MidiEventConfiguration* const now = chosen();
    if (now == nullptr || place_ >= now->translations.size()) {
        return;
    }
    MidiEventConfiguration after = *now;
    after.translations[place_] = form_->translation().clone();
    models().midiInput.put(tr("edit what a message does"), after, true);
}

void MidiInputPanel::change(const QString& text, const std::function<void(Configuration::Translations&)>& work) {
    if (const MidiEventConfiguration* const now = chosen()) {
        MidiEventConfiguration after = *now;
        work(after.translations);
        models().midiInput.put(text, after);
    }
}

} // namespace Desktop
