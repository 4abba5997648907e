#include "desktop/panels/ValueEventFields.h"

#include "desktop/Palette.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/MessageKinds.h"
#include "desktop/widgets/MenuBox.h"

#include <QGridLayout>
#include <QLabel>
#include <utility>

namespace Desktop {

using Backend::ValueEvent;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;

ValueEventFields::ValueEventFields(Models& models, const QString& role, QWidget* parent)
    : QWidget(parent), models_(models) {
    auto* const table = new QGridLayout(this);
    table->setContentsMargins(0, 0, 0, 0);
    table->setSpacing(grid(1));
    const auto place = [&](int row, int column, const QString& caption, QWidget* widget) {
        auto* const label = new QLabel(caption, this);
        label->setObjectName("Dim");
        table->addWidget(label, row, column * 2);
        table->addWidget(widget, row, column * 2 + 1);
    };
    const auto field = [&](int max, const QString& name, const QString& help,
                           std::function<void(ValueEvent&, int)> set) {
        auto* const made = new NumberField(this);
        made->setRange(0, max);
        made->describe(name + role, help);
        made->setFocusPolicy(Qt::StrongFocus);
        connect(made, &NumberField::moved, this,
                [this, set = std::move(set)](int value) { change([&](ValueEvent& event) { set(event, value); }); });
        connect(made, &NumberField::letGo, this, [this] { models_.edits.endOfGesture(); });
        return made;
    };
    const auto orDefault = [](int value) { return value == 0 ? tr("default") : QString::number(value); };
    kind_ = makeMenu(tr("Message") + role, tr("The message that carries the value"), this);
    addMessageKinds(*kind_, OfKinds::all);
    connect(kind_, &QComboBox::activated, this, [this] {
        models_.edits.alone([this] {
            change([this](ValueEvent& event) {
                event.message = MidiMessage(messageKindOf(*kind_), event.message.getD1());
            });
        });
    });
    place(0, 0, tr("message"), kind_);
    number_ = field(127, tr("Number"), tr("Which controller or which note"),
                    [](ValueEvent& event, int value) { event.message.setD1(static_cast<std::int8_t>(value)); });
    place(0, 1, tr("number"), number_);
    channel_ = field(16, tr("Channel"), tr("The channel that it goes out on; by default the layer's"),
                     [](ValueEvent& event, int value) { event.channel = static_cast<std::int8_t>(value - 1); });
    channel_->setText(orDefault);
    place(0, 2, tr("channel"), channel_);
    output_ = field(127, tr("Output"), tr("The MIDI output that it goes to"),
                    [](ValueEvent& event, int value) { event.output = static_cast<std::int8_t>(value - 1); });
    output_->setText([this](int value) { return models_.ports.outputName(value - 1); });
    place(1, 0, tr("output"), output_);
    zone_ = field(128, tr("Zone"), tr("The zone that it goes to"),
                  [](ValueEvent& event, int value) { event.zone = static_cast<std::int8_t>(value - 1); });
    zone_->setText([](int value) { return value == 0 ? tr("none") : QString::number(value); });
    place(1, 1, tr("zone"), zone_);
    table->setColumnStretch(6, 1);
    setEvent({});
}

ValueEvent ValueEventFields::fresh() {
    ValueEvent event;
    event.message = MidiMessage(MessageType::controllerChange, 1);
    return event;
}

void ValueEventFields::change(const std::function<void(ValueEvent&)>& work) {
    work(event_);
    setEvent(event_);
    emit edited();
}

void ValueEventFields::setEvent(const ValueEvent& event) {
    event_ = event;
    const MessageType type = event.message.getMessageType();
    showMessageKind(*kind_, type);
    number_->setText([type](int value) { return firstByteText(type, value); });
    number_->setValue(event.message.getD1());
    // Elsewhere the value stands there.
    number_->setEnabled(!byteNames(type).d2.isEmpty() && !isWide(type));
    channel_->setValue(event.channel + 1);
    channel_->setEnabled(hasChannel(type));
    output_->setValue(event.output + 1);
    zone_->setValue(event.zone + 1);
}

} // namespace Desktop
