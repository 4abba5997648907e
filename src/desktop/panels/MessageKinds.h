// A choice among kinds of MIDI messages.
#pragma once

#include "values/MessageType.h"

#include <QComboBox>

namespace Desktop {

// All kinds but System Exclusive, or only those with a channel.
enum class OfKinds { all, withChannel };
void addMessageKinds(QComboBox& box, OfKinds which);
// Chooses a kind; one that is not among the choices becomes one more of them.
void showMessageKind(QComboBox& box, Backend::MidiEngine::MessageType type);
[[nodiscard]] Backend::MidiEngine::MessageType messageKindOf(const QComboBox& box);

} // namespace Desktop
