#include "input/ValueEventXml.h"

#include "values/AttributeReading.h"

namespace Backend {

using MidiEngine::MessageType;
using MidiEngine::MidiMessage;

namespace {

AttributeFormat routing(std::string_view name, std::int32_t greatest, std::string_view meaning) {
    AttributeFormat format = AttributeFormat::integerOf(name, "-1", -1, greatest, meaning);
    format.clamped = true;
    return format;
}

const ElementFormat& format() {
    static const ElementFormat instance = valueEventFormat();
    return instance;
}

// As far as it names the event: what the number is put into is 0.
MidiMessage identityOf(const MidiMessage& message) {
    const bool byFirst =
        message.isNote() || message.isControllerChange() || message.getMessageType() == MessageType::keyPressure;
    return byFirst ? MidiMessage(message.getMessageType(), message.getD1()) : MidiMessage(message.getMessageType());
}

} // namespace

ElementFormat valueEventFormat() {
    ElementFormat element;
    element.name = "Function";
    element.meaning = "One MIDI event that is sent.";
    element.attributes = {
        AttributeFormat::of(AttributeKind::midiEvent, "midiEvent", "",
                            "The event, with the note or the controller where it has one."),
        routing("output", 127, "The MIDI output; -1: the default output, or the layers'."),
        routing("channel", 15, "The MIDI channel, counted from 0; -1: that of the layers."),
        routing("zone", 127, "The zone that it belongs to; -1: none."),
    };
    return element;
}

ValueEvent readValueEvent(const Platform::XmlElement& element) {
    ValueEvent event;
    const MidiMessage message = readMidiEvent(element, format()["midiEvent"]);
    event.message = message.getD1() < 0 ? MidiMessage() : identityOf(message);
    event.output = static_cast<std::int8_t>(readInteger(element, format()["output"]));
    event.channel = static_cast<std::int8_t>(readInteger(element, format()["channel"]));
    event.zone = static_cast<std::int8_t>(readInteger(element, format()["zone"]));
    return event;
}

void writeValueEvent(XmlWriter& xml, const ValueEvent& event) {
    std::string text = event.message.isValid() ? event.message.toXmlString() : std::string();
    if (event.message.getMessageType() == MessageType::keyPressure) {
        text += "," + std::to_string(event.message.getD1()); // its own text form leaves the note out
    }
    xml.attribute("midiEvent", text)
        .attribute("output", std::int32_t{event.output})
        .attribute("channel", std::int32_t{event.channel})
        .attribute("zone", std::int32_t{event.zone});
}

} // namespace Backend
