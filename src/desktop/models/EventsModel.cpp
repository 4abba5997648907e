#include "desktop/models/EventsModel.h"

#include "core/QelIF.h"
#include "desktop/models/Models.h"
#include "midiengine/DisplayMessageManager.h"

#include <QStringList>
#include <algorithm>

namespace Desktop {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

EventsModel::EventsModel(Models& models) : models_(models) {
    clock_.start();
}

EventsModel::~EventsModel() {
    stop();
}

void EventsModel::start() {
    if (!listening_) {
        listening_ = true;
        models_.qel().getDisplayMessageManager().addListener(*this);
    }
}

void EventsModel::stop() {
    if (listening_) {
        listening_ = false;
        models_.qel().getDisplayMessageManager().removeListener(*this);
    }
}

void EventsModel::messageSent(const Backend::Display::DisplayRecord& record) { // [display]
    const std::lock_guard lock(mutex_);
    if (waiting_.size() < capacity) {
        waiting_.push_back({record.message, record.output, record.input, record.zone, record.layer, false,
                            static_cast<std::uint32_t>(clock_.elapsed())});
    }
}

void EventsModel::addReceived(const QelMidiMessage& message) {
    const std::lock_guard lock(mutex_);
    if (waiting_.size() < capacity) {
        waiting_.push_back({message.getMidiMessage(), message.getInput(), message.getInput(), message.getZone(), -1,
                            true, static_cast<std::uint32_t>(clock_.elapsed())});
    }
}

bool EventsModel::drain() {
    {
        const std::lock_guard lock(mutex_);
        taken_.swap(waiting_);
    }
    if (taken_.empty()) {
        return false;
    }
    int count = 0;
    for (const ListedEvent& event : taken_) {
        if (shows(event)) {
            events_.push_back(event);
            ++count;
        }
    }
    while (events_.size() > capacity) {
        events_.pop_front();
    }
    taken_.clear();
    if (count > 0) {
        emit added(count);
    }
    return count > 0;
}

bool EventsModel::shows(const ListedEvent& event) const {
    return models_.settings.isOn(event.incoming ? Gui::ChangedSetting::displayMidiInputEvents
                                                : Gui::ChangedSetting::displayMidiOutputEvents) &&
           !hidden_.contains(kindOf(event)) && (onlyPort_.isEmpty() || portOf(event) == onlyPort_);
}

EventsModel::Kind EventsModel::kindOf(const ListedEvent& event) {
    switch (event.message.getMessageType()) {
    case MessageType::noteOn:
    case MessageType::noteOff:
        return Kind::notes;
    case MessageType::controllerChange:
        return Kind::controllers;
    case MessageType::pitchBend:
        return Kind::pitchBend;
    case MessageType::keyPressure:
    case MessageType::channelPressure:
        return Kind::pressure;
    case MessageType::programChange:
        return Kind::programs;
    default:
        return Kind::system;
    }
}

void EventsModel::setHidden(Kind kind, bool on) {
    if (on) {
        hidden_.insert(kind);
    } else {
        hidden_.erase(kind);
    }
    sift();
}

void EventsModel::setOnlyPort(const QString& name) {
    onlyPort_ = name;
    sift();
}

void EventsModel::sift() {
    std::erase_if(events_, [this](const ListedEvent& event) {
        return hidden_.contains(kindOf(event)) || (!onlyPort_.isEmpty() && portOf(event) != onlyPort_);
    });
    emit changed();
}

void EventsModel::clear() {
    events_.clear();
    emit changed();
}

QString EventsModel::nameOf(const ListedEvent& event) const {
    QString name = QString::fromStdString(event.message.getEventNameWithCcAndNoteDetail());
    if (event.message.isNoteOff()) {
        name.replace(0, 4, tr("Note Off"));
    } else if (event.message.isNoteOn()) {
        name.replace(0, 4, tr("Note On"));
    }
    if (models_.settings.isOn(Gui::ChangedSetting::displayNumbers)) {
        const int bytes = event.message.getMessageSize();
        const int numbers[]{event.message.getStatusWithChannel(), event.message.getD1(), event.message.getD2()};
        for (int i = 0; i < 3 && i <= bytes; ++i) {
            name +=
                (i == 0 ? "  " : " ") + QStringLiteral("%1").arg(numbers[i] & 0xFF, 2, 16, QLatin1Char('0')).toUpper();
        }
    }
    return name;
}

QString EventsModel::valueOf(const ListedEvent& event) const {
    switch (event.message.getMessageType()) {
    case MessageType::pitchBend:
    case MessageType::songPosition:
        return QString::number(event.message.getD1() + 128 * event.message.getD2());
    default:
        const int size = event.message.getMessageSize();
        return size > 1 ? QString::number(event.message.getD2())
                        : (size > 0 ? QString::number(event.message.getD1()) : QString());
    }
}

QString EventsModel::portOf(const ListedEvent& event) const {
    return event.incoming ? models_.ports.inputName(event.port) : models_.ports.outputName(event.port);
}

QString EventsModel::timeOf(const ListedEvent& event) {
    return QString::number(event.milliseconds / 1000.0, 'f', 3);
}

QString EventsModel::wayOf(const ListedEvent& event) const {
    QStringList parts;
    if (event.incoming) {
        return tr("input");
    }
    parts << (event.input >= 0 ? models_.ports.inputName(event.input) : tr("here"));
    if (event.zone >= 0) {
        parts << tr("zone %1").arg(event.zone + 1);
    }
    if (event.layer >= 0) {
        parts << tr("L:%1").arg(event.layer + 1);
    }
    parts << models_.ports.outputName(event.port);
    return parts.join(" → ");
}

} // namespace Desktop
