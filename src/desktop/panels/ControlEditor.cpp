#include "desktop/panels/ControlEditor.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/widgets/NumberField.h"

#include <QGridLayout>
#include <QLabel>

namespace Desktop {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;

namespace {

constexpr MessageType eventTypes[]{
    MessageType::none,          MessageType::noteOn,          MessageType::keyPressure, MessageType::controllerChange,
    MessageType::programChange, MessageType::channelPressure, MessageType::pitchBend,   MessageType::songPosition,
    MessageType::songSelect};

bool hasNumber(MessageType type) {
    return type == MessageType::noteOn || type == MessageType::keyPressure || type == MessageType::controllerChange;
}

QString orDefault(int value) {
    return value == 0 ? QObject::tr("default") : QString::number(value);
}

} // namespace

ControlEditor::ControlEditor(Models& models, QWidget* parent) : QWidget(parent), models_(models) {
    auto* const table = new QGridLayout(this);
    table->setContentsMargins(0, 0, 0, 0);
    table->setSpacing(grid(1));
    const auto place = [&](int row, int column, const QString& caption, QWidget* widget, const QString& help) {
        auto* const label = new QLabel(caption, this);
        label->setObjectName("Dim");
        widget->setAccessibleName(tr("%1 of the control").arg(caption));
        widget->setStatusTip(help);
        table->addWidget(label, row, column * 2);
        table->addWidget(widget, row, column * 2 + 1);
    };
    const auto number = [&](int min, int max) {
        auto* const field = new NumberField(this);
        field->setRange(min, max);
        connect(field, &NumberField::letGo, this, &ControlEditor::store);
        return field;
    };
    name_ = new QLineEdit(this);
    connect(name_, &QLineEdit::editingFinished, this, &ControlEditor::store);
    place(0, 0, tr("Name"), name_, tr("The caption of the control"));
    type_ = new QComboBox(this);
    type_->addItems({tr("empty"), tr("number"), tr("upright fader"), tr("lying fader"), tr("knob"), tr("label")});
    connect(type_, &QComboBox::activated, this, &ControlEditor::store);
    place(0, 1, tr("Shape"), type_, tr("How it is drawn and moved"));
    size_ = number(1, 8);
    place(0, 2, tr("Size"), size_, tr("How many cells it spans"));
    min_ = number(0, 16383);
    place(1, 0, tr("From"), min_, tr("The value at its lower end"));
    max_ = number(0, 16383);
    place(1, 1, tr("To"), max_, tr("The value at its upper end; below the other it is upside down"));
    springs_ = new QCheckBox(tr("springs back to"), this);
    connect(springs_, &QCheckBox::clicked, this, &ControlEditor::store);
    springs_->setAccessibleName(tr("The control springs back"));
    release_ = number(0, 16383);
    table->addWidget(springs_, 1, 4);
    release_->setAccessibleName(tr("Value that the control springs back to"));
    table->addWidget(release_, 1, 5);
    event_ = new QComboBox(this);
    event_->addItem(tr("sends nothing"));
    for (std::size_t i = 1; i < std::size(eventTypes); ++i) {
        event_->addItem(QString::fromStdString(MidiMessage::getEventNameStatic(eventTypes[i])));
    }
    connect(event_, &QComboBox::activated, this, &ControlEditor::storeEvent);
    place(2, 0, tr("Sends"), event_, tr("The message that carries its value"));
    number_ = number(0, 127);
    connect(number_, &NumberField::letGo, this, &ControlEditor::storeEvent);
    place(2, 1, tr("Number"), number_, tr("Which controller or note"));
    channel_ = number(0, 16);
    channel_->setText(orDefault);
    connect(channel_, &NumberField::letGo, this, &ControlEditor::storeEvent);
    place(2, 2, tr("Channel"), channel_, tr("The channel it sends on"));
    output_ = number(0, 64);
    output_->setText(orDefault);
    connect(output_, &NumberField::letGo, this, &ControlEditor::storeEvent);
    place(3, 0, tr("Output"), output_, tr("The output it sends to"));
    zone_ = number(0, 16);
    zone_->setText(orDefault);
    connect(zone_, &NumberField::letGo, this, &ControlEditor::storeEvent);
    place(3, 1, tr("Zone"), zone_, tr("The zone it sends in"));
    autoSend_ = new QCheckBox(tr("sent at the start"), this);
    autoSend_->setAccessibleName(tr("The control is sent at the start"));
    autoSend_->setStatusTip(tr("Its value goes out once when the program starts"));
    connect(autoSend_, &QCheckBox::clicked, this, &ControlEditor::store);
    table->addWidget(autoSend_, 3, 4);
    auto* const buttons = new QHBoxLayout;
    learn_ = new QPushButton(tr("learn"), this);
    learn_->setCheckable(true);
    learn_->setAccessibleName(tr("Learn the message"));
    learn_->setStatusTip(tr("The next message that arrives becomes the one that this control sends"));
    learn_->setFocusPolicy(Qt::TabFocus);
    connect(learn_, &QPushButton::clicked, this, &ControlEditor::learnAsked);
    remove_ = new QPushButton(tr("remove"), this);
    remove_->setAccessibleName(tr("Remove the control"));
    remove_->setStatusTip(tr("Takes the control away"));
    remove_->setFocusPolicy(Qt::TabFocus);
    connect(remove_, &QPushButton::clicked, this, [this] { models_.controls.remove(cell_); });
    buttons->addWidget(learn_);
    buttons->addWidget(remove_);
    table->addLayout(buttons, 3, 5);
    showControl({});
}

void ControlEditor::setLearning(bool on) {
    learn_->setChecked(on);
}

void ControlEditor::showControl(const Cell& cell) {
    cell_ = cell;
    const Backend::Controls::Control* const control = models_.controls.map().find(cell);
    setEnabled(control != nullptr);
    if (control == nullptr) {
        return;
    }
    showing_ = true;
    name_->setText(QString::fromStdString(control->name));
    type_->setCurrentIndex(static_cast<int>(control->type.getKind()));
    size_->setValue(control->size);
    min_->setValue(control->min);
    max_->setValue(control->max);
    springs_->setChecked(control->release != Backend::Controls::Control::NO_RELEASE);
    release_->setValue(std::max(0, control->release));
    autoSend_->setChecked(control->autoSend);
    const Backend::ValueEvent event = control->events.empty() ? Backend::ValueEvent{} : control->events.front();
    const auto type = std::find(std::begin(eventTypes), std::end(eventTypes), event.message.getMessageType());
    event_->setCurrentIndex(type == std::end(eventTypes) ? 0 : static_cast<int>(type - std::begin(eventTypes)));
    number_->setValue(event.message.getD1());
    number_->setEnabled(hasNumber(event.message.getMessageType()));
    channel_->setValue(event.channel + 1);
    output_->setValue(event.output + 1);
    zone_->setValue(event.zone + 1);
    showing_ = false;
}

void ControlEditor::store() {
    const Backend::Controls::Control* const control = models_.controls.map().find(cell_);
    if (showing_ || control == nullptr) {
        return;
    }
    Backend::Controls::Control after = *control;
    after.name = name_->text().toStdString();
    after.type =
        Backend::Controls::ControlType(static_cast<Backend::Controls::ControlType::Kind>(type_->currentIndex()));
    after.size = size_->value();
    after.min = min_->value();
    after.max = max_->value();
    after.release = springs_->isChecked() ? release_->value() : Backend::Controls::Control::NO_RELEASE;
    after.autoSend = autoSend_->isChecked();
    after.value = after.clamped(after.value);
    models_.controls.put(tr("edit a control"), after);
}

void ControlEditor::storeEvent() {
    const Backend::Controls::Control* const control = models_.controls.map().find(cell_);
    if (showing_ || control == nullptr) {
        return;
    }
    Backend::Controls::Control after = *control;
    const MessageType type = eventTypes[event_->currentIndex()];
    Backend::ValueEvent event;
    event.message = MidiMessage(type, hasNumber(type) ? static_cast<std::int8_t>(number_->value()) : std::int8_t{0});
    event.channel = static_cast<std::int8_t>(channel_->value() - 1);
    event.output = static_cast<std::int8_t>(output_->value() - 1);
    event.zone = static_cast<std::int8_t>(zone_->value() - 1);
    if (after.events.empty()) {
        after.events.push_back(event);
    } else {
        after.events.front() = event;
    }
    if (type == MessageType::none) {
        after.events.erase(after.events.begin());
    }
    if (type == MessageType::pitchBend && after.min == 0 && after.max == 127) {
        after.max = 16383;
    }
    models_.controls.put(tr("edit what a control sends"), after);
}

} // namespace Desktop
