#include "desktop/panels/MessageFields.h"

#include "desktop/Palette.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/models/Models.h"
#include "desktop/widgets/MenuBox.h"
#include "desktop/widgets/NumberField.h"

#include <QGridLayout>
#include <algorithm>

namespace Desktop {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using Backend::MidiEngine::QelMidiMessage;
using Backend::MidiInput::MidiEvent;

MessageFields::MessageFields(Models& models, Shows shows, const QString& role, QWidget* parent)
    : QWidget(parent), models_(models), isEvent_(shows == Shows::event) {
    auto* const rows = new QGridLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(grid(1));
    const auto menu = [&](const QString& name, const QString& help) {
        auto* const box = makeMenu(name + " " + role, help, this);
        connect(box, &QComboBox::activated, this, [this] {
            showKind();
            emit edited();
        });
        return box;
    };
    const auto field = [&](const QString& name, const QString& help) {
        auto* const made = new NumberField(this);
        made->describe(name + " " + role, help);
        made->setFocusPolicy(Qt::StrongFocus);
        connect(made, &NumberField::letGo, this, &MessageFields::edited);
        return made;
    };
    kind_ = menu(tr("Kind"), tr("What kind of message it is"));
    for (int status = 0x80; status <= 0xFF; status += status < 0xF0 ? 0x10 : 1) {
        const auto each = static_cast<MessageType>(status);
        // System Exclusive is not taken in.
        if (isKnown(each) && each != MessageType::systemExclusive && each != MessageType::endOfSysex) {
            kind_->addItem(QString::fromStdString(eventName(each)), status);
        }
    }
    d1_ = field(tr("First byte"), tr("Its first data byte: which note, which controller, which program"));
    d2_ = field(tr("Second byte"), tr("Its second data byte: how hard, how far"));
    channel_ = menu(tr("Channel"), tr("The channel that it comes in on"));
    if (isEvent_) {
        channel_->addItem(tr("any channel"), int{MidiEvent::ANY});
    }
    for (int channel = 0; channel < 16; ++channel) {
        channel_->addItem(tr("channel %1").arg(channel + 1), channel);
    }
    input_ = menu(tr("Input"), tr("The MIDI input that it comes from"));
    rows->addWidget(kind_, 0, 0);
    rows->addWidget(d1_, 0, 1);
    rows->addWidget(d2_, 0, 2);
    rows->addWidget(channel_, 1, 0);
    rows->addWidget(input_, 1, 1, 1, 2);
    rows->setColumnStretch(0, 1);
    rows->setColumnStretch(1, 1);
    rows->setColumnStretch(2, isEvent_ ? 0 : 1);
    connect(&models.ports, &Model::changed, this, [this] { fillInputs(input_->currentData().toInt()); });
    set(MidiMessage(MessageType::noteOn, 60, 100, 0), isEvent_ ? MidiEvent::ANY : 0, isEvent_ ? MidiEvent::ANY : 0);
}

void MessageFields::fillInputs(int input) {
    input_->clear();
    if (isEvent_) {
        input_->addItem(tr("any input"), int{MidiEvent::ANY});
    }
    const int count = std::max(static_cast<int>(models_.ports.inputs().size()),
                               input == MidiEvent::ANY || input < 0 ? (isEvent_ ? 0 : 1) : input + 1);
    for (int each = 0; each < count; ++each) {
        input_->addItem(models_.ports.inputName(each), each);
    }
    input_->setCurrentIndex(std::max(0, input_->findData(input)));
}

void MessageFields::set(const MidiMessage& message, int input, int channel) {
    kind_->setCurrentIndex(std::max(0, kind_->findData(static_cast<int>(message.getMessageType()))));
    d1_->setValue(message.getD1());
    d2_->setValue(message.getD2());
    channel_->setCurrentIndex(std::max(0, channel_->findData(channel)));
    fillInputs(input);
    showKind();
}

void MessageFields::setEvent(const MidiEvent& event) {
    set(event.message, event.input, event.channel);
}

void MessageFields::setMessage(const QelMidiMessage& message) {
    set(message.getMidiMessage(), message.getInput(), message.getChannel());
}

MessageType MessageFields::type() const {
    return static_cast<MessageType>(kind_->currentData().toInt());
}

void MessageFields::showKind() {
    const MessageType now = type();
    const ByteNames names = byteNames(now);
    const bool counts =
        now == MessageType::noteOn || now == MessageType::noteOff || now == MessageType::controllerChange;
    d1_->setVisible(!names.d1.isEmpty() && (counts || !isEvent_));
    d2_->setVisible(!names.d2.isEmpty() && !isEvent_);
    d1_->setText(
        [names, now, counts](int value) { return (counts ? QString() : names.d1 + ' ') + firstByteText(now, value); });
    d2_->setText([names](int value) { return names.d2 + ' ' + QString::number(value); });
    // An event of a message without a channel has that of the byte that carries none.
    channel_->setVisible(hasChannel(now) || isEvent_);
}

MidiEvent MessageFields::event() const {
    const QelMidiMessage now = message();
    return {static_cast<std::uint8_t>(input_->currentData().toInt()),
            static_cast<std::uint8_t>(channel_->currentData().toInt()), MidiMessage(now.getMessageType(), now.getD1())};
}

QelMidiMessage MessageFields::message() const {
    const MessageType now = type();
    const int size = dataByteCount(now);
    return {now,
            static_cast<std::int8_t>(size > 0 ? d1_->value() : 0),
            static_cast<std::int8_t>(size > 1 ? d2_->value() : 0),
            static_cast<std::int8_t>(hasChannel(now) ? channel_->currentData().toInt() : 0),
            QelMidiMessage::DEFAULT_OUTPUT,
            QelMidiMessage::DEFAULT_ZONE,
            static_cast<std::int8_t>(input_->currentData().toInt()),
            Backend::noTicks};
}

} // namespace Desktop
