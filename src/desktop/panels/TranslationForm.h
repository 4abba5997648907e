// Chooses what an incoming message becomes, when, and edits its settings.
#pragma once

#include "desktop/panels/ActionForm.h"
#include "midiinput/MidiEvent.h"
#include "midiinput/Translation.h"

#include <memory>

namespace Desktop {

class NumberField;

class TranslationForm final : public ActionForm {
    Q_OBJECT

public:
    TranslationForm(Models& models, QWidget* parent);

    // A copy of it, for messages of that event. Nothing happens when the form shows just that.
    void setTranslation(const Backend::MidiInput::TranslationManagement::Translation& translation,
                        const Backend::MidiInput::MidiEvent& event);
    // As it is now; there must be one.
    [[nodiscard]] const Backend::MidiInput::TranslationManagement::Translation& translation() const { return *draft_; }

    // A new one that passes the message on as it came, to be made what it is to be.
    [[nodiscard]] static std::unique_ptr<Backend::MidiInput::TranslationManagement::Translation> fresh();

private:
    using Translation = Backend::MidiInput::TranslationManagement::Translation;

    void choose(const std::string& keyword) override;
    void showSettings();
    void showCondition();
    void storeCondition();

    QComboBox* byte_;
    QComboBox* operator_;
    NumberField* value_;
    std::unique_ptr<Translation> draft_;
    Backend::MidiInput::MidiEvent event_;
};

} // namespace Desktop
