#include "input/MidiForm.h"

#include "core/QelIF.h"
#include "input/ActionAttributes.h"
#include "values/AttributeReading.h"
#include "values/Note.h"
#include "values/QelMidiMessage.h"
#include "values/TextNumbers.h"

#include <algorithm>
#include <string_view>

namespace Backend::FunctionManagement {

namespace {

using MidiEngine::MessageType;
using MidiEngine::QelMidiMessage;

constexpr int highestData = 127;
constexpr int highestData14 = 16383;
constexpr int highestChannel = 15;
constexpr int notSet = MidiSettingsType::NOT_SET;

enum class Data { none, note, sevenBits, fourteenBits };

// What the data bytes of a message are called.
struct DataNames {
    Data kind = Data::none;         // of the first
    std::string_view first = {};    // of both together when it has fourteen bits
    std::string_view second = {};   // seven bits; empty: there is none
    std::string_view initial = "0"; // of the first
};

DataNames dataNames(MessageType type) {
    switch (type) {
    case MessageType::noteOn:
    case MessageType::noteOff:
        return {Data::note, "note", "velocity", ""};
    case MessageType::keyPressure:
        return {Data::note, "key", "pressure", ""};
    case MessageType::controllerChange:
        return {Data::sevenBits, "controller", "value"};
    case MessageType::programChange:
        return {Data::sevenBits, "program"};
    case MessageType::channelPressure:
        return {Data::sevenBits, "pressure"};
    case MessageType::songSelect:
        return {Data::sevenBits, "songNumber"};
    case MessageType::unofficialBusSelect:
        return {Data::sevenBits, "busNumber"};
    case MessageType::pitchBend:
        return {Data::fourteenBits, "value", "", "8192"};
    case MessageType::songPosition:
        return {Data::fourteenBits, "value"};
    default:
        return {};
    }
}

bool hasChannel(MessageType type) {
    return type < MessageType::systemExclusive;
}

AttributeFormat clampedInteger(std::string_view name, std::string_view initial, int maximum, std::string_view meaning) {
    AttributeFormat format = AttributeFormat::integerOf(name, initial, 0, maximum, meaning);
    format.clamped = true;
    return format;
}

std::uint8_t readNoteNumber(const Platform::XmlElement& element, const AttributeFormat& format) {
    const std::string text = readText(element, format);
    if (const Note note = Note::fromName(text); note.isSet()) {
        return static_cast<std::uint8_t>(note.getNumber());
    }
    const auto number = readDecimal(text);
    return static_cast<std::uint8_t>(number ? std::clamp(*number, 0, highestData) : notSet);
}

} // namespace

std::vector<AttributeFormat> MidiForm::attributes(const Actions::SendMidi& call) {
    std::vector<AttributeFormat> formats = Actions::wayAttributes();
    if (hasChannel(call.type)) {
        formats.push_back(AttributeFormat::integerOf("channel", "-1", -1, highestChannel,
                                                     "The MIDI channel, counted from 0; -1: the default channel."));
    }
    const DataNames data = dataNames(call.type);
    if (data.kind == Data::note) {
        formats.push_back(AttributeFormat::of(AttributeKind::optionalNote, data.first, data.initial, "The note."));
    } else if (data.kind != Data::none) {
        const int maximum = data.kind == Data::fourteenBits ? highestData14 : highestData;
        formats.push_back(clampedInteger(data.first, data.initial, maximum, "The first data of the message."));
    }
    if (!data.second.empty()) {
        formats.push_back(clampedInteger(data.second, "0", highestData, "The second data of the message."));
    }
    return formats;
}

void MidiForm::read(const Actions::SendMidi& call, const Platform::XmlElement& element, Settings& settings) {
    const std::vector<AttributeFormat> formats = attributes(call);
    auto next = formats.begin();
    settings.zone = Actions::readWay(element, *next++);
    settings.output = Actions::readWay(element, *next++);
    if (hasChannel(call.type)) {
        const int channel = readInteger(element, *next++);
        settings.channel =
            static_cast<std::int8_t>(channel < 0 || channel == notSet ? -1 : std::min(channel, highestChannel));
    }
    const DataNames data = dataNames(call.type);
    switch (data.kind) {
    case Data::none:
        return;
    case Data::note:
        settings.d1 = readNoteNumber(element, *next++);
        break;
    case Data::sevenBits:
        settings.d1 = static_cast<std::uint8_t>(readInteger(element, *next++));
        break;
    case Data::fourteenBits:
        settings.setValue14(readInteger(element, *next++));
        break;
    }
    if (!data.second.empty()) {
        settings.d2 = static_cast<std::uint8_t>(readInteger(element, *next));
    }
}

void MidiForm::write(const Actions::SendMidi& call, const Settings& settings, XmlWriter& xml) {
    if (settings.zone != notSet) {
        xml.attribute("zone", std::int32_t{settings.zone});
    }
    if (settings.output != notSet) {
        xml.attribute("output", std::int32_t{settings.output});
    }
    if (hasChannel(call.type) && settings.channel >= 0) {
        xml.attribute("channel", std::int32_t{settings.channel});
    }
    const DataNames data = dataNames(call.type);
    switch (data.kind) {
    case Data::none:
        return;
    case Data::note:
        xml.attribute(data.first, settings.d1 == notSet ? Note() : Note(settings.d1));
        break;
    case Data::sevenBits:
        xml.attribute(data.first, std::int32_t{settings.d1});
        break;
    case Data::fourteenBits:
        xml.attribute(data.first, std::int32_t{settings.getValue14()});
        break;
    }
    if (!data.second.empty()) {
        xml.attribute(data.second, std::int32_t{settings.d2});
    }
}

bool MidiForm::equal(const Settings& a, const Settings& b) {
    return a.zone == b.zone && a.output == b.output && a.channel == b.channel && a.d1 == b.d1 && a.d2 == b.d2;
}

void MidiForm::perform(const Actions::SendMidi& call, const Settings& settings, QelIF& qel) {
    if (dataNames(call.type).kind != Data::note || settings.d1 != notSet) {
        qel.playMidi(message(call, settings));
    }
}

QelMidiMessage MidiForm::message(const Actions::SendMidi& call, const Settings& settings) {
    return {call.type,
            static_cast<std::int8_t>(settings.d1),
            static_cast<std::int8_t>(settings.d2),
            settings.channel,
            static_cast<std::int8_t>(settings.output),
            static_cast<std::int8_t>(settings.zone),
            QelMidiMessage::DEFAULT_INPUT,
            noTicks};
}

MidiEventIdentity MidiForm::midiEvent(const Actions::SendMidi& call, const Settings& settings) {
    const bool numbered = dataNames(call.type).kind == Data::note || call.type == MessageType::controllerChange;
    return {call.type, numbered ? settings.d1 : MidiEventIdentity::NO_NUMBER, settings.channel, settings.output,
            settings.zone};
}

} // namespace Backend::FunctionManagement
