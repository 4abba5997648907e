// What becomes of an incoming MIDI message, or what it makes the program do.
#pragma once

#include "input/MidiEventIdentity.h"
#include "midiinput/MidiTranslationCondition.h"
#include "midiinput/TranslationSettingsTypes.h"
#include "values/QelMidiMessage.h"

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

namespace Backend {
class QelIF;
}

namespace Backend::MidiInput::TranslationManagement {

class TranslationVisitor;

// Acts through the facade only. Once its configuration is in place, condition and settings stay as they are.
class Translation {
public:
    virtual ~Translation() = default;
    Translation& operator=(const Translation&) = delete;

    // With its condition and its facade.
    [[nodiscard]] virtual std::unique_ptr<Translation> clone() const = 0;
    // The keyword: the name of its XML element.
    [[nodiscard]] virtual const std::string& getName() const = 0;
    // Its own element, without the condition, on a line behind `depth` tabs.
    virtual void writeXml(std::ostream& out, int depth) const = 0;
    virtual void accept(TranslationVisitor& visitor) const = 0;
    // For editing by a visitor of the type of its settings.
    [[nodiscard]] virtual TranslationSettingsType& getSettings() = 0;
    void accept(TranslationSettingsVisitor& visitor) { getSettings().accept(visitor); }
    // It passes the message on as if nothing were configured.
    [[nodiscard]] virtual bool isDefault() const = 0;
    // Performs the action for one message, whatever its condition; without a facade nothing. What the facade throws
    // passes. [backend]
    virtual void execute(const MidiEngine::QelMidiMessage& incoming) const = 0;
    // The facade outlives the translation; null: none.
    void setQel(QelIF* qel) { qel_ = qel; }
    // What it would send for this message; empty for a translation that sends no MIDI.
    [[nodiscard]] virtual MidiEventIdentity getMidiEvent(const MidiEngine::QelMidiMessage& incoming) const = 0;
    // The number of its text in helpText().
    [[nodiscard]] virtual int getHelpId() const = 0;

    // The message that executing it would play for this one; nothing when it sends no MIDI.
    [[nodiscard]] virtual std::optional<MidiEngine::QelMidiMessage>
    getMidiMessage(const MidiEngine::QelMidiMessage& incoming) const = 0;
    // Executing it changes nothing in the program: it sends MIDI, or does nothing.
    [[nodiscard]] virtual bool onlyPlays() const = 0;

    [[nodiscard]] const MidiTranslationCondition& getCondition() const { return condition_; }
    void setCondition(const MidiTranslationCondition& condition) { condition_ = condition; }

protected:
    Translation() = default;
    Translation(const Translation&) = default;
    [[nodiscard]] QelIF* getQel() const { return qel_; }

private:
    MidiTranslationCondition condition_;
    QelIF* qel_ = nullptr;
};

} // namespace Backend::MidiInput::TranslationManagement
