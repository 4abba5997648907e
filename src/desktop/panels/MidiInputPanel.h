// The panel of incoming MIDI: a table of messages and of what they do.
#pragma once

#include "desktop/panels/PanelFrame.h"
#include "midiinput/MidiEvent.h"
#include "values/QelMidiMessage.h"

#include <QSplitter>
#include <cstddef>
#include <optional>

namespace Desktop {

class EmptyState;
class MidiInputEditor;
class MidiInputTable;

class MidiInputPanel final : public PanelFrame {
    Q_OBJECT

public:
    MidiInputPanel(Models& models, QWidget* parent);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    using Event = Backend::MidiInput::MidiEvent;

    void makeEmptyState();
    void refresh();
    // Shows that event, or the first one where there is none.
    void showAt(const std::optional<Event>& event, std::size_t translation);
    void learned(const Backend::MidiEngine::QelMidiMessage& message);
    // Makes the event the chosen one; where there is nothing for it, it gets a translation that changes nothing.
    void open(const Event& event);
    void addMessage();

    QToolButton* learn_;
    EmptyState* empty_;
    QSplitter* parts_;
    MidiInputTable* table_;
    MidiInputEditor* editor_;
};

} // namespace Desktop
