#include "desktop/panels/MidiInputPanel.h"

#include "core/FolderNames.h"
#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/MidiInputEditor.h"
#include "desktop/panels/MidiInputTable.h"
#include "desktop/panels/TranslationForm.h"
#include "desktop/widgets/ColumnArea.h"
#include "desktop/widgets/EmptyState.h"
#include "midiinput/IncomingMessage.h"
#include "midiinput/MidiInputMessageManager.h"

#include <utility>

namespace Desktop {

using namespace Backend::MidiInput;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using Backend::MidiEngine::QelMidiMessage;

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
    table_ = new MidiInputTable(models, parts_);
    connect(table_, &MidiInputTable::chosen, this, [this](const MidiEvent& event, std::size_t translation) {
        this->models().edits.endOfGesture();
        editor_->showMessage(event, translation);
    });
    auto* const scroll = new ColumnArea(parts_);
    scroll->setMinimumHeight(grid(30));
    editor_ = new MidiInputEditor(models, scroll);
    scroll->setWidget(editor_);
    parts_->setStretchFactor(0, 2);
    parts_->setStretchFactor(1, 3);
    body().addWidget(empty_, 1);
    body().addWidget(parts_, 1);
    connect(&models.midiInput, &Model::changed, this, &MidiInputPanel::refresh);
    connect(&models.ports, &Model::changed, table_, &MidiInputTable::fill);
    connect(&models.playing, &PlayingModel::received, this, &MidiInputPanel::learned);
    setPresets(
        {Backend::FolderNames::midiInputPresets, [this] { return this->models().midiInput.map().presetName; },
         [this](const std::string& name) { this->models().midiInput.loadPreset(name); },
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

// Beside each other where there is room for it.
void MidiInputPanel::resizeEvent(QResizeEvent* event) {
    PanelFrame::resizeEvent(event);
    const Qt::Orientation now = width() > grid(180) ? Qt::Horizontal : Qt::Vertical;
    if (now != parts_->orientation()) {
        parts_->setOrientation(now);
        const int half = (now == Qt::Horizontal ? width() : height()) / 2;
        parts_->setSizes({half, half});
    }
}

void MidiInputPanel::refresh() {
    table_->fill();
    empty_->setVisible(table_->events().empty());
    parts_->setVisible(!table_->events().empty());
    showPresetName();
    showAt(editor_->event(), editor_->translation());
}

void MidiInputPanel::showAt(const std::optional<Event>& event, std::size_t translation) {
    if (event && models().midiInput.map().find(*event) != nullptr) {
        editor_->showMessage(event, translation);
    } else {
        editor_->showMessage(table_->events().empty() ? std::nullopt : std::optional(table_->events().front()), 0);
    }
    if (editor_->event()) {
        table_->choose(*editor_->event(), editor_->translation());
    }
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

void MidiInputPanel::open(const Event& event) {
    models().edits.endOfGesture();
    if (models().midiInput.map().find(event) != nullptr) {
        return showAt(event, 0);
    }
    editor_->showMessage(event, 0); // once there is one
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

} // namespace Desktop
