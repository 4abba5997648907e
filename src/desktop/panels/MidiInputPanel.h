// The panel of incoming MIDI: a table of messages and of what they do.
#pragma once

#include "desktop/panels/PanelFrame.h"
#include "midiinput/MidiEventConfiguration.h"
#include "values/QelMidiMessage.h"

#include <QSplitter>
#include <QTimer>
#include <QTreeWidget>
#include <functional>
#include <optional>
#include <vector>

namespace Desktop {

class EmptyState;
class MessageFields;
class TranslationForm;
class TryOut;

class MidiInputPanel final : public PanelFrame {
    Q_OBJECT

public:
    MidiInputPanel(Models& models, QWidget* parent);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    using Configuration = Backend::MidiInput::MidiEventConfiguration;
    using Event = Backend::MidiInput::MidiEvent;

    void makeTable();
    void makeEditor();
    void makeEmptyState();
    void refresh();
    void fillTable();
    void showChosen();
    void chosenInTable();
    void learned(const Backend::MidiEngine::QelMidiMessage& message);
    void fitColumns();
    void light(const Backend::MidiEngine::QelMidiMessage& message);
    void setLit(const std::optional<Event>& event);
    // Makes the event the chosen one; where there is nothing for it, it gets a translation that changes nothing.
    void open(const Event& event);
    void addMessage();
    void moveMessage();
    void storeTranslation();
    // Changes a copy of the chosen configuration and puts it in the place of it.
    void change(const QString& text, const std::function<void(Configuration::Translations&)>& work);
    // What is chosen; null when nothing is.
    [[nodiscard]] const Configuration* chosen();
    [[nodiscard]] QTreeWidgetItem* itemOf(const Event& event) const;

    QToolButton* learn_;
    EmptyState* empty_;
    QSplitter* parts_;
    QTreeWidget* table_;
    QWidget* editor_;
    MessageFields* message_;
    QLabel* hint_;
    TranslationForm* form_;
    QToolButton *add_, *copy_, *earlier_, *later_, *remove_;
    TryOut* tryOut_;
    QTimer lamp_;                     // until the row of the last message goes dark
    std::optional<Event> lit_;        // that row
    std::vector<Event> events_;       // by row
    std::vector<std::size_t> counts_; // of the translations of each row, as it is shown
    std::optional<Event> chosen_;
    std::size_t place_ = 0; // of the chosen translation
};

} // namespace Desktop
