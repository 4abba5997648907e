#include "desktop/panels/SettingsForm.h"

namespace Desktop {

using Backend::MidiEngine::MessageType;
using Backend::MidiInput::ChannelTranslation;

namespace {

std::function<QString(int)> firstByteOf(MessageType type) {
    return [type](int value) { return firstByteText(type, value); };
}

} // namespace

void addMidiRows(FormRows& rows, Backend::FunctionManagement::MidiSettingsType& settings, MessageType type) {
    const ByteNames names = byteNames(type);
    if (isWide(type)) {
        rows.addNumber({QObject::tr("Value"), QObject::tr("The value of the message that is sent")}, 0, 16383,
                       settings.getValue14(), [&settings](int value) { settings.setValue14(value); });
    } else {
        const auto byte = [&rows](const QString& name, std::uint8_t& value, std::function<QString(int)> written) {
            if (!name.isEmpty()) {
                rows.addNumber(
                    {capitalised(name), QObject::tr("The %1 of the message that is sent").arg(name)}, 0, 127, value,
                    [&value](int now) { value = static_cast<std::uint8_t>(now); }, std::move(written));
            }
        };
        byte(names.d1, settings.d1, firstByteOf(type));
        byte(names.d2, settings.d2, {});
    }
    rows.addZone(settings.zone);
    rows.addOutput(settings.output);
    if (hasChannel(type)) {
        rows.addChannel({QObject::tr("of the layer")}, settings.channel + 1,
                        [&settings](int index) { settings.channel = static_cast<std::int8_t>(index - 1); });
    }
}

void addMidiRows(FormRows& rows, Backend::MidiInput::TranslationManagement::MidiSettingsType& settings,
                 MessageType type) {
    const ByteNames names = byteNames(type);
    const auto help = [](const QString& name) {
        return QObject::tr("The %1 of the message that is sent: always the same, or from the one that came in")
            .arg(name);
    };
    if (!names.d1.isEmpty()) {
        rows.addByte({capitalised(names.d1), help(names.d1)}, settings.d1, firstByteOf(type));
    }
    if (!names.d2.isEmpty()) {
        rows.addByte({capitalised(names.d2), help(names.d2)}, settings.d2, {});
    }
    rows.addZone(settings.zone);
    rows.addOutput(settings.output);
    if (hasChannel(type)) {
        // What is no channel goes out on the default one.
        const int current =
            settings.channel.isUnchanged() ? 1 : (settings.channel.isFixed() ? settings.channel.getChannel() + 2 : 0);
        rows.addChannel({QObject::tr("of the layer"), QObject::tr("as it came in")}, current, [&settings](int index) {
            settings.channel = index == 0   ? ChannelTranslation(ChannelTranslation::DEFAULT_CHANNEL)
                               : index == 1 ? ChannelTranslation(ChannelTranslation::UNCHANGED)
                                            : ChannelTranslation(index - 2);
        });
    }
}

} // namespace Desktop
