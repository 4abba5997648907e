// What one incoming message is and does: its fields, its translations, and what becomes of a message to try.
#pragma once

#include "midiinput/MidiEventConfiguration.h"

#include <QLabel>
#include <QWidget>
#include <cstddef>
#include <functional>
#include <optional>

namespace Desktop {

class ListButtons;
class MessageFields;
class Models;
class TranslationForm;
class TryOut;

class MidiInputEditor final : public QWidget {
    Q_OBJECT

public:
    using Event = Backend::MidiInput::MidiEvent;

    MidiInputEditor(Models& models, QWidget* parent);

    // What is shown, as the model has it now; nothing when there is no such event. A place beyond the translations is
    // that of the last one.
    void showMessage(const std::optional<Event>& event, std::size_t translation);
    [[nodiscard]] const std::optional<Event>& event() const { return event_; }
    [[nodiscard]] std::size_t translation() const { return place_; }

private:
    using Configuration = Backend::MidiInput::MidiEventConfiguration;

    void moveMessage();
    void storeTranslation();
    // Changes a copy of the configuration and puts it in the place of it.
    void change(const QString& text, const std::function<void(Configuration::Translations&)>& work);
    [[nodiscard]] const Configuration* now() const; // null when nothing is shown

    Models& models_;
    std::optional<Event> event_;
    std::size_t place_ = 0;
    MessageFields* message_;
    ListButtons* buttons_;
    TranslationForm* form_;
    QLabel* hint_;
    TryOut* tryOut_;
};

} // namespace Desktop
