// The try-out line: this message in, these messages out.
#pragma once

#include "midiinput/InputSteps.h"
#include "midiinput/MidiEvent.h"

#include <QComboBox>
#include <QLabel>
#include <QWidget>
#include <optional>
#include <vector>

namespace Desktop {

class MessageFields;
class Models;

class TryOut final : public QWidget {
    Q_OBJECT

public:
    TryOut(Models& models, QWidget* parent);

    // The message to try becomes one that the event is for.
    void setEvent(const Backend::MidiInput::MidiEvent& event);

private:
    void addExample(const QString& text, const Backend::MidiEngine::QelMidiMessage& message);
    void refresh();
    [[nodiscard]] QString textOf(const Backend::MidiInput::InputSteps& steps) const;

    Models& models_;
    QComboBox* examples_;
    MessageFields* message_;
    QLabel* result_;
    std::vector<Backend::MidiEngine::QelMidiMessage> messages_; // of the examples; the first is the last that arrived
    std::optional<Backend::MidiInput::MidiEvent> event_;
};

} // namespace Desktop
