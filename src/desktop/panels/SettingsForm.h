// The form of an action's settings, made from their type: a new function or translation has one at once.
#pragma once

#include "desktop/panels/FormRows.h"
#include "input/FunctionSettingsTypes.h"
#include "midiinput/TranslationSettingsTypes.h"
#include "values/ElementFormat.h"

namespace Desktop {

// The rows of the settings that send MIDI, which each family has of its own. `type` is the message that is sent.
void addMidiRows(FormRows& rows, Backend::FunctionManagement::MidiSettingsType& settings,
                 Backend::MidiEngine::MessageType type);
void addMidiRows(FormRows& rows, Backend::MidiInput::TranslationManagement::MidiSettingsType& settings,
                 Backend::MidiEngine::MessageType type);

// Visits settings that live as long as the widgets of `rows`. The format of the action's element says which of the
// settings it uses, and the help on them.
template <typename Family> class SettingsForm final : public Backend::Actions::SettingsVisitor<Family> {
public:
    SettingsForm(FormRows& rows, const ElementFormat& format, Backend::MidiEngine::MessageType type)
        : rows_(rows), format_(format), type_(type) {}

    void visit(Backend::Actions::NoSettings<Family>&) override {}
    void visit(Backend::Actions::PlainSettings<Family>&) override {}
    void visit(typename Family::MidiSettings& settings) override { addMidiRows(rows_, settings, type_); }
    void visit(Backend::Actions::OnOffToggleSettings<Family>& settings) override {
        add("type", QObject::tr("State"), settings.type);
    }
    void visit(Backend::Actions::SelectSettings<Family>& settings) override {
        add("type", QObject::tr("Which"), settings.type);
        add("value", QObject::tr("Value"), settings.value);
    }
    void visit(Backend::Actions::ChangeBooleanSettings<Family>& settings) override {
        add("type", QObject::tr("Which"), settings.type);
        add("value", QObject::tr("State"), settings.value);
    }
    void visit(Backend::Actions::ChangeNoteToggleSettings<Family>& settings) override {
        add("type", QObject::tr("Which"), settings.type);
        add("value", QObject::tr("Mode"), settings.value);
    }
    void visit(Backend::Actions::SelectControlSettings<Family>& settings) override {
        add("type", QObject::tr("Which"), settings.type);
        add("value", QObject::tr("Value"), settings.value);
    }
    void visit(Backend::Actions::LoadPresetSettings<Family>& settings) override {
        const AttributeFormat& attribute = format_["preset"];
        rows_.addPreset({QObject::tr("Preset"), text(attribute.meaning)}, text(attribute.presetFolder),
                        settings.preset);
    }
    void visit(Backend::Actions::MoveWindowSettings<Family>& settings) override {
        add("x", QObject::tr("To the right"), settings.x);
        add("y", QObject::tr("Downward"), settings.y);
    }

private:
    static QString text(std::string_view utf8) {
        return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    }
    template <typename Value> void add(std::string_view attribute, const QString& name, Value& value) {
        if (format_.hasAttribute(attribute)) {
            rows_.add({name, text(format_[attribute].meaning)}, value);
        }
    }

    FormRows& rows_;
    const ElementFormat& format_;
    Backend::MidiEngine::MessageType type_;
};

} // namespace Desktop
