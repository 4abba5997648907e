// An incoming MIDI message in fields: its kind, its data, where it comes from.
#pragma once

#include "midiinput/MidiEvent.h"
#include "values/QelMidiMessage.h"

#include <QComboBox>
#include <QWidget>

namespace Desktop {

class Models;
class NumberField;

class MessageFields final : public QWidget {
    Q_OBJECT

public:
    // `role` stands behind the names of the fields. An event asks for what a configuration is known by only, and its
    // input and its channel may be any.
    enum class Shows { message, event };
    MessageFields(Models& models, Shows shows, const QString& role, QWidget* parent);

    // From outside: nobody is told.
    void setEvent(const Backend::MidiInput::MidiEvent& event);
    void setMessage(const Backend::MidiEngine::QelMidiMessage& message);
    [[nodiscard]] Backend::MidiInput::MidiEvent event() const;
    [[nodiscard]] Backend::MidiEngine::QelMidiMessage message() const;

signals:
    void edited(); // by the user; of a gesture, its end

private:
    void set(const Backend::MidiEngine::MidiMessage& message, int input, int channel);
    [[nodiscard]] Backend::MidiEngine::MessageType type() const;
    void showKind();
    void fillInputs(int input);

    Models& models_;
    bool isEvent_;
    QComboBox *kind_, *channel_, *input_;
    NumberField *d1_, *d2_;
};

} // namespace Desktop
