// The panel of incoming MIDI: a table of messages and of what they do.
#pragma once

#include "desktop/panels/PanelFrame.h"
#include "midiinput/MidiEvent.h"
#include "values/QelMidiMessage.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QTreeWidget>
#include <optional>
#include <vector>

namespace Desktop {

class MidiInputPanel final : public PanelFrame {
    Q_OBJECT

public:
    MidiInputPanel(Models& models, QWidget* parent);

private:
    void refresh();
    void choose();
    void store();
    void tryOut();
    void learned(const Backend::MidiEngine::QelMidiMessage& message);

    QTreeWidget* table_;
    QToolButton* learn_;
    QComboBox* kind_;
    QPlainTextEdit* text_;
    QLabel* result_;
    std::vector<Backend::MidiInput::MidiEvent> events_; // by row
    std::optional<Backend::MidiInput::MidiEvent> chosen_;
};

} // namespace Desktop
