#include "desktop/panels/TryOut.h"

#include "desktop/Palette.h"
#include "desktop/models/ActionTexts.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/MessageFields.h"
#include "desktop/widgets/MenuBox.h"

#include <QHBoxLayout>
#include <QStringList>
#include <QVBoxLayout>
#include <initializer_list>

namespace Desktop {

using namespace Backend::MidiInput;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

namespace {

QelMidiMessage example(MessageType type, int d1, int d2) {
    return {type, static_cast<std::int8_t>(d1), static_cast<std::int8_t>(d2), 0, -1, -1, 0, Backend::noTicks};
}

} // namespace

TryOut::TryOut(Models& models, QWidget* parent) : QWidget(parent), models_(models) {
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(grid(1));
    auto* const head = new QHBoxLayout;
    auto* const title = new QLabel(tr("Try it"), this);
    title->setObjectName("PanelTitle");
    head->addWidget(title);
    examples_ =
        makeMenu(tr("Messages to try"), tr("A message to begin with; the fields below make any other of it"), this);
    addExample(tr("the last that came in"), example(MessageType::noteOn, 60, 100));
    addExample(tr("a soft note"), example(MessageType::noteOn, 60, 30));
    addExample(tr("a loud note"), example(MessageType::noteOn, 60, 120));
    addExample(tr("a note that ends"), example(MessageType::noteOff, 60, 64));
    addExample(tr("the modulation wheel"), example(MessageType::controllerChange, 1, 64));
    addExample(tr("the pedal goes down"), example(MessageType::controllerChange, 64, 127));
    addExample(tr("the bend wheel in the middle"), example(MessageType::pitchBend, 0, 64));
    addExample(tr("another program"), example(MessageType::programChange, 5, 0));
    head->addWidget(examples_, 1);
    all->addLayout(head);
    message_ = new MessageFields(models, MessageFields::Shows::message, tr("to try"), this);
    all->addWidget(message_);
    result_ = new QLabel(this);
    result_->setAccessibleName(tr("What becomes of the message"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    result_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    all->addWidget(result_);
    connect(examples_, &QComboBox::activated, this, [this](int index) {
        message_->setMessage(messages_[static_cast<std::size_t>(index)]);
        refresh();
    });
    connect(message_, &MessageFields::edited, this, &TryOut::refresh);
    for (const Model* const each : std::initializer_list<const Model*>{&models.midiInput, &models.ports}) {
        connect(each, &Model::changed, this, &TryOut::refresh);
    }
    connect(&models.playing, &PlayingModel::received, this,
            [this](const QelMidiMessage& message) { messages_.front() = message; });
    refresh();
}

void TryOut::addExample(const QString& text, const QelMidiMessage& message) {
    examples_->addItem(text);
    messages_.push_back(message);
}

void TryOut::setEvent(const MidiEvent& event) {
    if (event_ && *event_ == event) {
        return;
    }
    event_ = event;
    constexpr int second = 100;
    const auto any = [](std::uint8_t number) {
        return static_cast<std::int8_t>(number == MidiEvent::ANY ? 0 : number);
    };
    message_->setMessage({event.message.getMessageType(), event.message.getD1(), second, any(event.channel),
                          QelMidiMessage::DEFAULT_OUTPUT, QelMidiMessage::DEFAULT_ZONE, any(event.input),
                          Backend::noTicks});
    refresh();
}

void TryOut::refresh() {
    result_->setText(textOf(rehearse(models_.midiInput.map(), message_->message())));
}

QString TryOut::textOf(const InputSteps& steps) const {
    const auto type = steps.incoming.getMessageType();
    QStringList lines{
        tr("%1 on %2, channel %3")
            .arg(messageText(steps.incoming.getMidiMessage()), models_.ports.inputName(steps.incoming.getInput()))
            .arg(steps.incoming.getChannel() + 1)};
    // Each look-up up to the one that found something.
    for (int i = 0; i < static_cast<int>(Found::nothing); ++i) {
        const auto look = static_cast<Found>(i);
        const bool hit = look == steps.lookUp.found;
        const std::string_view name = nameOf(look);
        lines << (hit ? "✓ " : "– ") + tr("looked up for %1: %2")
                                           .arg(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())),
                                                hit ? tr("found") : tr("nothing"));
        if (hit) {
            break;
        }
    }
    for (const InputSteps::Tried& tried : steps.tried) {
        const auto& condition = tried.translation->getCondition();
        QString line = (tried.conditionHeld ? "✓ " : "✗ ") + conditionText(condition, type);
        if (!condition.isOff()) {
            line += tr(" with %1").arg(condition.comparedByte(steps.incoming.getMidiMessage()));
        }
        if (!tried.conditionHeld) {
            lines << line + ": " + tr("does not hold");
        } else {
            lines << line + " → " +
                         (tried.message ? sentText(*tried.message, models_.ports)
                                        : longTextOf(*tried.translation, steps.lookUp.configuration->event));
        }
    }
    if (steps.passedOn) {
        lines << "→ " + tr("goes on: %1").arg(sentText(*steps.passedOn, models_.ports));
    }
    if (steps.incoming.isNoteOff()) {
        lines << tr("and ends what its Note On has started");
    }
    return lines.join('\n');
}

} // namespace Desktop
