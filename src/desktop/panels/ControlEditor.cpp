#include "desktop/panels/ControlEditor.h"

#include "desktop/Palette.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/ListChooser.h"
#include "desktop/panels/ValueEventFields.h"
#include "desktop/widgets/MenuBox.h"
#include "desktop/widgets/NumberField.h"

#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <array>
#include <utility>

namespace Desktop {

using Backend::ValueEvent;
using Backend::Controls::Control;
using Backend::Controls::ControlType;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;

namespace {

constexpr int greatest = 16383;

// What the control goes up to follows what the message can carry, where it was all that the one before could.
void fitRange(Control& control, std::int32_t before, std::int32_t now) {
    if (before != now && now > 0 && control.min == 0 && control.max == std::max(before, 127)) {
        control.max = now;
        control.value = control.clamped(control.value);
    }
}

} // namespace

ControlEditor::ControlEditor(Models& models, QWidget* parent) : QWidget(parent), models_(models) {
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(grid(1));
    makeSettings();
    makeEvents();
    connect(&models.playing, &PlayingModel::received, this, &ControlEditor::learned);
    showControl({});
}

NumberField* ControlEditor::makeField(int min, int max, const QString& name, const QString& help) {
    auto* const field = new NumberField(this);
    field->setRange(min, max);
    field->describe(name, help);
    field->setFocusPolicy(Qt::StrongFocus);
    connect(field, &NumberField::letGo, this, [this] { models_.edits.endOfGesture(); });
    return field;
}

NumberField* ControlEditor::makeNumber(int min, int max, const QString& name, const QString& help,
                                       std::function<void(Control&, int)> set) {
    NumberField* const field = makeField(min, max, tr("%1 of the control").arg(name), help);
    connect(field, &NumberField::moved, this, [this, set = std::move(set)](int value) {
        change(tr("edit a control"), [&](Control& control) { set(control, value); });
    });
    return field;
}

void ControlEditor::makeSettings() {
    std::array<QHBoxLayout*, 2> rows{};
    for (QHBoxLayout*& row : rows) {
        row = new QHBoxLayout;
        row->setSpacing(grid(1));
        static_cast<QVBoxLayout*>(layout())->addLayout(row);
    }
    const auto place = [&](std::size_t row, const QString& caption, QWidget* widget) {
        auto* const label = new QLabel(caption, this);
        label->setObjectName("Dim");
        rows[row]->addWidget(label);
        rows[row]->addWidget(widget);
    };
    name_ = new QLineEdit(this);
    name_->setAccessibleName(tr("Name of the control"));
    name_->setStatusTip(tr("The caption of the control"));
    connect(name_, &QLineEdit::editingFinished, this, [this] {
        changeAlone(tr("name a control"), [this](Control& control) { control.name = name_->text().toStdString(); });
    });
    place(0, tr("Name"), name_);
    type_ = new MenuBox(this);
    type_->addItems({tr("empty"), tr("number"), tr("upright fader"), tr("lying fader"), tr("knob"), tr("label")});
    type_->setAccessibleName(tr("Shape of the control"));
    type_->setStatusTip(tr("How it is drawn and moved"));
    connect(type_, &QComboBox::activated, this, [this](int kind) {
        changeAlone(tr("shape a control"),
                    [kind](Control& control) { control.type = ControlType(static_cast<ControlType::Kind>(kind)); });
    });
    place(0, tr("Shape"), type_);
    size_ = makeNumber(1, 8, tr("Size"), tr("How many cells it spans"),
                       [](Control& control, int value) { control.size = value; });
    place(0, tr("Size"), size_);
    row_ = makeField(1, 64, tr("Row of the control"), tr("Where it stands; a control that is there changes places"));
    place(0, tr("Row"), row_);
    column_ =
        makeField(1, 64, tr("Column of the control"), tr("Where it stands; a control that is there changes places"));
    for (NumberField* const each : {row_, column_}) { // not past all that stands on the way
        connect(each, &NumberField::letGo, this, [this] { moveTo({row_->value() - 1, column_->value() - 1}); });
    }
    place(0, tr("Column"), column_);
    const auto setEnd = [](std::int32_t Control::*end) {
        return [end](Control& control, int value) {
            control.*end = value;
            control.value = control.clamped(control.value);
        };
    };
    min_ = makeNumber(0, greatest, tr("From"), tr("The value at its lower end"), setEnd(&Control::min));
    place(1, tr("From"), min_);
    max_ = makeNumber(0, greatest, tr("To"), tr("The value at its upper end; below the other it is upside down"),
                      setEnd(&Control::max));
    place(1, tr("To"), max_);
    springs_ = new QCheckBox(tr("springs back to"), this);
    springs_->setAccessibleName(tr("The control springs back"));
    springs_->setStatusTip(tr("Let go, it returns to a value of its own"));
    connect(springs_, &QCheckBox::clicked, this, [this](bool on) {
        changeAlone(tr("edit a control"), [on](Control& control) {
            control.release = on ? control.clamped(control.value) : Control::NO_RELEASE;
        });
    });
    rows[1]->addWidget(springs_);
    release_ = makeNumber(0, greatest, tr("Resting value"), tr("The value that it springs back to"),
                          [](Control& control, int value) { control.release = value; });
    rows[1]->addWidget(release_);
    autoSend_ = new QCheckBox(tr("sent at the start"), this);
    autoSend_->setAccessibleName(tr("The control is sent at the start"));
    autoSend_->setStatusTip(tr("Its value goes out once when the program starts"));
    connect(autoSend_, &QCheckBox::clicked, this,
            [this](bool on) { changeAlone(tr("edit a control"), [on](Control& control) { control.autoSend = on; }); });
    rows[1]->addWidget(autoSend_);
    auto* const remove = new QPushButton(tr("remove"), this);
    remove->setAccessibleName(tr("Remove the control"));
    remove->setStatusTip(tr("Takes the control away"));
    remove->setFocusPolicy(Qt::TabFocus);
    connect(remove, &QPushButton::clicked, this, [this] { models_.controls.remove(cell_); });
    rows[1]->addStretch(1);
    rows[1]->addWidget(remove);
}

void ControlEditor::makeEvents() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(grid(1));
    auto* const caption = new QLabel(tr("Sends"), this);
    caption->setObjectName("Dim");
    row->addWidget(caption);
    const QString role = tr(" of the control");
    events_ = new ListChooser(tr("message"), role, tr("nothing"), this);
    connect(events_, &ListChooser::chosen, this, [this] {
        models_.edits.endOfGesture();
        showControl(cell_);
    });
    connect(events_, &ListChooser::asked, this, [this](ListWork work) {
        std::size_t place = events_->place();
        changeAlone(tr("edit what a control sends"), [&](Control& control) {
            doWork(work, control.events, place, &ValueEventFields::fresh);
            events_->setPlace(place);
        });
    });
    row->addWidget(events_, 1);
    learn_ = new QPushButton(tr("learn"), this);
    learn_->setCheckable(true);
    learn_->setAccessibleName(tr("Learn the message"));
    learn_->setStatusTip(tr("The next message that arrives becomes the one that this control sends"));
    learn_->setFocusPolicy(Qt::TabFocus);
    connect(learn_, &QPushButton::toggled, this,
            [this](bool on) { learn_->setText(on ? tr("waiting for a message…") : tr("learn")); });
    row->addWidget(learn_);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    event_ = new ValueEventFields(models_, role, this);
    connect(event_, &ValueEventFields::edited, this, [this] {
        change(tr("edit what a control sends"), [this](Control& control) {
            if (events_->place() < control.events.size()) {
                ValueEvent& event = control.events[events_->place()];
                const std::int32_t before = event.greatestValue();
                event = event_->event();
                fitRange(control, before, event.greatestValue());
            }
        });
    });
    layout()->addWidget(event_);
}

void ControlEditor::setLearning(bool on) {
    learn_->setChecked(on);
}

void ControlEditor::learned(const Backend::MidiEngine::QelMidiMessage& message) {
    ValueEvent event;
    event.message = MidiMessage(message.getMessageType(), message.getD1());
    // Clocks and active sensing arrive all the time; a Note Off belongs to the key that was meant.
    if (!learn_->isChecked() || message.isNoteOff() || event.greatestValue() == 0) {
        return;
    }
    learn_->setChecked(false);
    changeAlone(tr("learn a message"), [&](Control& control) {
        if (control.events.empty()) {
            control.events.emplace_back();
        }
        ValueEvent& chosen = control.events[std::min(events_->place(), control.events.size() - 1)];
        const std::int32_t before = chosen.greatestValue();
        chosen.message = event.message;
        fitRange(control, before, chosen.greatestValue());
    });
}

void ControlEditor::change(const QString& text, const std::function<void(Control&)>& work) {
    if (const Control* const control = models_.controls.map().find(cell_)) {
        Control after = *control;
        work(after);
        models_.controls.put(text, after, true);
        showControl(cell_);
    }
}

void ControlEditor::changeAlone(const QString& text, const std::function<void(Control&)>& work) {
    models_.edits.alone([&] { change(text, work); });
}

void ControlEditor::moveTo(const Cell& cell) {
    if (!(cell == cell_) && models_.controls.map().find(cell_) != nullptr) {
        const Cell from = std::exchange(cell_, cell);
        models_.controls.moveTo(from, cell);
        showControl(cell_);
        emit cellChanged();
    }
}

void ControlEditor::showControl(const Cell& cell) {
    if (!(cell == cell_)) {
        cell_ = cell;
        events_->setPlace(0);
        learn_->setChecked(false);
        models_.edits.endOfGesture();
        emit cellChanged();
    }
    const Control* const control = models_.controls.map().find(cell);
    setEnabled(control != nullptr);
    if (control == nullptr) {
        return;
    }
    name_->setText(QString::fromStdString(control->name));
    type_->setCurrentIndex(static_cast<int>(control->type.getKind()));
    size_->showValue(1, 8, control->size);
    row_->showValue(1, 64, cell.x + 1);
    column_->showValue(1, 64, cell.y + 1);
    min_->showValue(0, greatest, control->min);
    max_->showValue(0, greatest, control->max);
    const bool springs = control->release != Control::NO_RELEASE;
    springs_->setChecked(springs);
    release_->setEnabled(springs);
    release_->showValue(0, greatest, springs ? control->release : 0);
    autoSend_->setChecked(control->autoSend);
    QStringList texts;
    for (const ValueEvent& event : control->events) {
        texts << kindText(event.message);
    }
    events_->showThings(texts);
    event_->setEnabled(!texts.isEmpty());
    if (!texts.isEmpty()) {
        event_->setEvent(control->events[events_->place()]);
    }
}

} // namespace Desktop
