// The rows of a form, one for each value: what the forms of functions and of translations are made of.
#pragma once

#include "desktop/models/MessageTexts.h"
#include "desktop/widgets/ChoiceField.h"
#include "midiinput/MidiTranslationValue.h"
#include "midiinput/TranslationSelection.h"
#include "values/NoteToggle.h"
#include "values/OnOffToggle.h"
#include "values/SelectControlType.h"
#include "values/SelectType.h"

#include <QFormLayout>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

namespace Desktop {

class Models;

// Makes widgets below `fields`. Each changes its value in place, so the values live as long as the widgets, and calls
// `changed` then. `role` stands behind the name of each widget, for assistive technology.
class FormRows final {
public:
    struct Label {
        QString name;
        QString help = {};
    };

    FormRows(Models& models, QWidget& fields, QString role, std::function<void()> changed);
    // The kind of message that translations take bytes from.
    void setIncoming(Backend::MidiEngine::MessageType type) { incoming_ = type; }

    void add(const Label& label, OnOffToggle& value);
    void add(const Label& label, NoteToggle& value);
    void add(const Label& label, SelectType& value);
    void add(const Label& label, SelectControlType& value);
    void add(const Label& label, RelativeFixedValue& value);
    void add(const Label& label, Backend::MidiInput::TranslationManagement::TranslationSelection& value);
    void add(const Label& label, Backend::MidiInput::TranslationManagement::MidiTranslationValue& value);
    // A data byte of a message that is sent.
    void addByte(const Label& label, Backend::MidiInput::TranslationManagement::MidiTranslationValue& value,
                 std::function<QString(int)> written);
    // The name of a preset of that folder of the user's files.
    void addPreset(const Label& label, const QString& folder, std::string& value);
    // Where a message goes; 255: none, or the default.
    void addZone(std::uint8_t& value);
    void addOutput(std::uint8_t& value);
    // Words, then the channels 1..16: number 0 is the first word.
    void addChannel(const QStringList& words, int current, std::function<void(int)> set);
    void addNumber(const Label& label, int min, int max, int value, std::function<void(int)> set,
                   std::function<QString(int)> written = {});
    void addMenu(const Label& label, const QStringList& items, int current, std::function<void(int)> set);
    void addChoice(const Label& label, std::vector<ChoiceField::Choice> choices, int current, int number,
                   std::function<void(int choice, int number)> set);

private:
    using Value = Backend::MidiInput::TranslationManagement::MidiTranslationValue;

    // The last choices of each value that may come from a byte of the incoming message; gives the place of the first.
    int addBytes(std::vector<ChoiceField::Choice>& choices) const;
    [[nodiscard]] static Value fromByte(int which, int offset);
    // The row of a value whose choices end with those; `numbered` is the place of the plain number.
    void addValue(const Label& label, std::vector<ChoiceField::Choice> choices, Value& value, int numbered,
                  std::function<Value(int choice, int number)> made);
    void addRow(const Label& label, QWidget* widget);
    void end();

    Models& models_;
    QWidget& fields_;
    QFormLayout& layout_;
    QString role_;
    std::function<void()> changed_;
    Backend::MidiEngine::MessageType incoming_ = Backend::MidiEngine::MessageType::none;
};

} // namespace Desktop
