#include "host/live/MessageText.h"

namespace Host {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;

namespace {

// "60 (C4)" of "Note 60 (C4)", "7: Channel Volume" of "Control Change 7: Channel Volume".
std::string detailOf(const MidiMessage& message) {
    const std::string text = message.getEventNameWithCcAndNoteDetail();
    const std::size_t digit = text.find_first_of("0123456789");
    return digit == std::string::npos ? std::to_string(message.getD1()) : text.substr(digit);
}

} // namespace

std::string textOf(const MidiMessage& message) {
    std::string text = message.getEventName();
    const auto add = [&text](const std::string& part) { text += ", " + part; };
    if (static_cast<int>(message.getMessageType()) < 0xF0) {
        add("channel " + std::to_string(message.getChannel() + 1));
    }
    switch (message.getMessageType()) {
    case MessageType::noteOff:
    case MessageType::noteOn:
    case MessageType::controllerChange:
        add(detailOf(message));
        add(std::to_string(message.getD2()));
        break;
    case MessageType::pitchBend:
    case MessageType::songPosition:
        add(std::to_string(message.getD1() + 128 * message.getD2()));
        break;
    default:
        if (message.getMessageSize() > 0) {
            add(std::to_string(message.getD1()));
        }
        if (message.getMessageSize() > 1) {
            add(std::to_string(message.getD2()));
        }
    }
    return text;
}

} // namespace Host
