// MIDI messages and their data bytes in words.
#pragma once

#include "values/MidiMessage.h"

#include <QString>

namespace Desktop {

// What the data bytes of a kind of message are called: "note", "velocity"; empty for one that it does not have. Without
// a kind they are "first byte" and "second byte".
struct ByteNames {
    QString d1;
    QString d2;
};
[[nodiscard]] ByteNames byteNames(Backend::MidiEngine::MessageType type);
// The same for a message that comes in, where every byte has a name: "first byte" for one that it does not have.
[[nodiscard]] ByteNames incomingNames(Backend::MidiEngine::MessageType type);
// The first data byte as it is read: "C4", "7 Channel Volume", else the number.
[[nodiscard]] QString firstByteText(Backend::MidiEngine::MessageType type, int value);
// Both data bytes are one number of 14 bits.
[[nodiscard]] bool isWide(Backend::MidiEngine::MessageType type);
[[nodiscard]] bool hasChannel(Backend::MidiEngine::MessageType type);

// With what it is about: "Note On C4", "Controller Change 7 Channel Volume", "Pitch Bend".
[[nodiscard]] QString kindText(const Backend::MidiEngine::MidiMessage& message);
// With all its data, without the channel: "Note On C4, velocity 100", "Pitch Bend 8192".
[[nodiscard]] QString messageText(const Backend::MidiEngine::MidiMessage& message);

// For a label: the first letter is a capital.
[[nodiscard]] QString capitalised(QString text);

} // namespace Desktop
