// Functions in words, as keys and menus show them, and translations, as the table of incoming messages does.
#pragma once

#include "input/Function.h"
#include "midiinput/MidiEvent.h"
#include "midiinput/Translation.h"

#include <QString>
#include <QStringList>

namespace Desktop {

class PortsModel;

// For the face of a key: a note by its name ("C4"), a controller with its value ("CC1 127"), a word for the rest.
[[nodiscard]] QString shortTextOf(const Backend::FunctionManagement::Function& function);
// In full: "Midi Note On C4, velocity 100, zone 1".
[[nodiscard]] QString longTextOf(const Backend::FunctionManagement::Function& function);
// For messages of an event: "Midi Note On C5, incoming velocity -20, zone 1". What it takes from a data byte that the
// event says is evaluated.
[[nodiscard]] QString longTextOf(const Backend::MidiInput::TranslationManagement::Translation& translation,
                                 const Backend::MidiInput::MidiEvent& event);
// The name in lists, of a function or a translation.
[[nodiscard]] QString displayNameOf(const std::string& keyword);

// The operators of conditions, at their numbers.
[[nodiscard]] QStringList comparisons();
// "velocity > 63" for messages of that kind; "always".
[[nodiscard]] QString
conditionText(const Backend::MidiInput::TranslationManagement::MidiTranslationCondition& condition,
              Backend::MidiEngine::MessageType incoming);
// A message with its way: "Note On C4, velocity 100, channel of the layer, zone 1".
[[nodiscard]] QString sentText(const Backend::MidiEngine::QelMidiMessage& message, const PortsModel& ports);

} // namespace Desktop
