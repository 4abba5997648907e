#include "midiinput/TranslationMidiForm.h"

#include "core/QelIF.h"
#include "input/ActionAttributes.h"
#include "midiinput/TranslationAttributes.h"

#include <algorithm>

namespace Backend::MidiInput::TranslationManagement {

using MidiEngine::MessageType;
using MidiEngine::QelMidiMessage;

namespace {

constexpr int notSet = MidiSettingsType::NOT_SET;
constexpr int highestByte = 127;

std::int8_t dataByte(const MidiTranslationValue& value, const QelMidiMessage& incoming) {
    return static_cast<std::int8_t>(std::clamp(value.evaluate(incoming.getMidiMessage()), 0, highestByte));
}

} // namespace

std::vector<AttributeFormat> TranslationMidiForm::attributes(const Actions::SendMidi&) {
    std::vector<AttributeFormat> formats = Actions::wayAttributes();
    formats.push_back(channelAttribute("channel", "The MIDI channel, counted from 0."));
    formats.push_back(Actions::attributeOf<MidiTranslationValue>("d1", "The first data byte."));
    formats.push_back(Actions::attributeOf<MidiTranslationValue>("d2", "The second data byte."));
    for (auto number = formats.end() - 2; number != formats.end(); ++number) {
        number->minimum = 0;
        number->maximum = highestByte;
    }
    return formats;
}

void TranslationMidiForm::read(const Actions::SendMidi&, const Platform::XmlElement& element, Settings& settings) {
    static const std::vector<AttributeFormat> ways = Actions::wayAttributes();
    settings.zone = Actions::readWay(element, ways[0]);
    settings.output = Actions::readWay(element, ways[1]);
    Actions::readAttribute(element, "channel", settings.channel);
    Actions::readAttribute(element, "d1", settings.d1);
    Actions::readAttribute(element, "d2", settings.d2);
}

void TranslationMidiForm::write(const Actions::SendMidi&, const Settings& settings, XmlWriter& xml) {
    if (settings.zone != notSet) {
        xml.attribute("zone", std::int32_t{settings.zone});
    }
    if (settings.output != notSet) {
        xml.attribute("output", std::int32_t{settings.output});
    }
    if (!settings.channel.isDefault()) {
        xml.attribute("channel", settings.channel);
    }
    xml.attribute("d1", settings.d1).attribute("d2", settings.d2);
}

void TranslationMidiForm::perform(const Actions::SendMidi& call, const Settings& settings, QelIF& qel,
                                  const QelMidiMessage& incoming) {
    qel.playMidi(*midiMessage(call, settings, incoming));
}

std::optional<QelMidiMessage> TranslationMidiForm::midiMessage(const Actions::SendMidi& call, const Settings& settings,
                                                               const QelMidiMessage& incoming) {
    QelMidiMessage message = incoming;
    if (call.type != MessageType::none) {
        message.setStatus(call.type);
    }
    if (settings.output != notSet) {
        message.setOutput(static_cast<std::int8_t>(settings.output));
    }
    message.setZone(static_cast<std::int8_t>(settings.zone));
    if (!settings.channel.isUnchanged()) {
        message.setChannel(settings.channel.isFixed() ? static_cast<std::int8_t>(settings.channel.getChannel())
                                                      : QelMidiMessage::DEFAULT_CHANNEL);
    }
    message.setD1(dataByte(settings.d1, incoming));
    message.setD2(dataByte(settings.d2, incoming));
    return message;
}

MidiEventIdentity TranslationMidiForm::midiEvent(const Actions::SendMidi& call, const Settings& settings,
                                                 const QelMidiMessage& incoming) {
    const QelMidiMessage message = *midiMessage(call, settings, incoming);
    if (message.isNote() && settings.zone == notSet) {
        return {};
    }
    const MessageType type = message.getMessageType();
    const bool numbered = message.isNote() || type == MessageType::keyPressure || type == MessageType::controllerChange;
    return {type, numbered ? static_cast<std::uint8_t>(message.getD1()) : MidiEventIdentity::NO_NUMBER,
            message.isDefaultChannel() ? QelMidiMessage::DEFAULT_CHANNEL : message.getMidiMessage().getChannel(),
            static_cast<std::uint8_t>(message.getOutput()), settings.zone};
}

} // namespace Backend::MidiInput::TranslationManagement
