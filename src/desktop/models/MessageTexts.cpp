#include "desktop/models/MessageTexts.h"

#include "desktop/models/NumberTexts.h"
#include "values/ControllerNames.h"

#include <QObject>

namespace Desktop {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;

ByteNames byteNames(MessageType type) {
    switch (type) {
    case MessageType::noteOn:
    case MessageType::noteOff:
        return {QObject::tr("note"), QObject::tr("velocity")};
    case MessageType::keyPressure:
        return {QObject::tr("key"), QObject::tr("pressure")};
    case MessageType::controllerChange:
        return {QObject::tr("controller"), QObject::tr("value")};
    case MessageType::programChange:
        return {QObject::tr("program"), {}};
    case MessageType::channelPressure:
        return {QObject::tr("pressure"), {}};
    case MessageType::songSelect:
    case MessageType::unofficialBusSelect:
        return {QObject::tr("number"), {}};
    case MessageType::pitchBend:
    case MessageType::songPosition:
        return {QObject::tr("fine part"), QObject::tr("coarse part")};
    case MessageType::none:
        return {QObject::tr("first byte"), QObject::tr("second byte")};
    default:
        return {};
    }
}

ByteNames incomingNames(MessageType type) {
    ByteNames names = byteNames(type);
    const ByteNames nameless = byteNames(MessageType::none);
    if (names.d1.isEmpty()) {
        names.d1 = nameless.d1;
    }
    if (names.d2.isEmpty()) {
        names.d2 = nameless.d2;
    }
    return names;
}

QString firstByteText(MessageType type, int value) {
    switch (type) {
    case MessageType::noteOn:
    case MessageType::noteOff:
    case MessageType::keyPressure:
        return noteText(value);
    case MessageType::controllerChange:
        return QString::number(value) + ' ' + QString::fromStdString(Backend::MidiEngine::controllerName(value));
    default:
        return QString::number(value);
    }
}

bool isWide(MessageType type) {
    return type == MessageType::pitchBend || type == MessageType::songPosition;
}

bool hasChannel(MessageType type) {
    return type < MessageType::systemExclusive;
}

QString kindText(const MidiMessage& message) {
    const MessageType type = message.getMessageType();
    const QString name = QString::fromStdString(message.getEventName());
    const bool numbered = message.isNote() || message.isControllerChange() || type == MessageType::keyPressure;
    return numbered ? name + ' ' + firstByteText(type, message.getD1()) : name;
}

QString messageText(const MidiMessage& message) {
    const MessageType type = message.getMessageType();
    const ByteNames names = byteNames(type);
    if (isWide(type)) {
        constexpr int highPart = 128;
        return kindText(message) + ' ' + QString::number(message.getD1() + highPart * message.getD2());
    }
    if (!names.d2.isEmpty()) {
        return kindText(message) + ", " + names.d2 + ' ' + QString::number(message.getD2());
    }
    return names.d1.isEmpty() ? kindText(message) : kindText(message) + ' ' + QString::number(message.getD1());
}

QString capitalised(QString text) {
    if (!text.isEmpty()) {
        text[0] = text[0].toUpper();
    }
    return text;
}

} // namespace Desktop
