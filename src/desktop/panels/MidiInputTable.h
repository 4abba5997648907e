// The table of incoming messages: what each is and what it does.
#pragma once

#include "midiinput/MidiEvent.h"
#include "values/QelMidiMessage.h"

#include <QTimer>
#include <QTreeWidget>
#include <cstddef>
#include <optional>
#include <vector>

namespace Desktop {

class Models;

// A row for each event, with a row below it for each of several translations. The row of a message that comes in is
// lit.
class MidiInputTable final : public QTreeWidget {
    Q_OBJECT

public:
    using Event = Backend::MidiInput::MidiEvent;

    MidiInputTable(Models& models, QWidget* parent);

    // As the model has it now.
    void fill();
    [[nodiscard]] const std::vector<Event>& events() const { return events_; } // by row
    // From outside: nobody is told.
    void choose(const Event& event, std::size_t translation);

signals:
    void chosen(const Backend::MidiInput::MidiEvent& event, std::size_t translation); // by the user

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void tellChosen();
    void fitColumns();
    void light(const Backend::MidiEngine::QelMidiMessage& message);
    void setLit(const std::optional<Event>& event);
    [[nodiscard]] QTreeWidgetItem* itemOf(const Event& event) const;

    Models& models_;
    QTimer lamp_;              // until the lit row goes dark
    std::optional<Event> lit_; // that row
    std::vector<Event> events_;
    std::vector<std::size_t> counts_; // of the translations of each row, as it is shown
};

} // namespace Desktop
