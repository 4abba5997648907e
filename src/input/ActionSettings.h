// What actions are configured with: one type for each kind of setting, whatever the action does with it. Functions and
// translations each have these types, made of what their family says.
#pragma once

#include "values/NoteToggle.h"
#include "values/OnOffToggle.h"
#include "values/SelectControlType.h"

#include <string>

namespace Backend::Actions {

// A Family names its Selection (which item is meant), its Number (a value or a step to it) and its MidiSettings.
template <typename Family> class SettingsVisitor;

template <typename Family> class SettingsType {
public:
    virtual ~SettingsType() = default;
    // Calls the visit of the settings' own type, which may change them.
    virtual void accept(SettingsVisitor<Family>& visitor) = 0;

protected:
    SettingsType() = default;
    SettingsType(const SettingsType&) = default;
    SettingsType& operator=(const SettingsType&) = default;
};

// Gives a settings type its nested Visitor.
template <typename Family, typename Type> class VisitableSettings : public SettingsType<Family> {
public:
    class Visitor {
    public:
        virtual ~Visitor() = default;
        virtual void visit(Type& settings) = 0;
    };

    void accept(SettingsVisitor<Family>& visitor) override {
        static_cast<Visitor&>(visitor).visit(static_cast<Type&>(*this));
    }
};

template <typename Family> struct NoSettings : VisitableSettings<Family, NoSettings<Family>> {};

template <typename Family> struct PlainSettings : VisitableSettings<Family, PlainSettings<Family>> {};

template <typename Family> struct OnOffToggleSettings : VisitableSettings<Family, OnOffToggleSettings<Family>> {
    OnOffToggle type;
};

// Some actions use one of the two only.
template <typename Family> struct SelectSettings : VisitableSettings<Family, SelectSettings<Family>> {
    typename Family::Selection type;
    typename Family::Number value;
};

template <typename Family> struct ChangeBooleanSettings : VisitableSettings<Family, ChangeBooleanSettings<Family>> {
    typename Family::Selection type;
    OnOffToggle value;
};

template <typename Family>
struct ChangeNoteToggleSettings : VisitableSettings<Family, ChangeNoteToggleSettings<Family>> {
    typename Family::Selection type;
    NoteToggle value;
};

// The value is that of ChangeControl only.
template <typename Family> struct SelectControlSettings : VisitableSettings<Family, SelectControlSettings<Family>> {
    SelectControlType type;
    typename Family::Number value;
};

template <typename Family> struct LoadPresetSettings : VisitableSettings<Family, LoadPresetSettings<Family>> {
    std::string preset;
};

template <typename Family> struct MoveWindowSettings : VisitableSettings<Family, MoveWindowSettings<Family>> {
    typename Family::Number x;
    typename Family::Number y;
};

// Reads and edits the settings of an action without knowing its class.
template <typename Family>
class SettingsVisitor : public NoSettings<Family>::Visitor,
                        public PlainSettings<Family>::Visitor,
                        public OnOffToggleSettings<Family>::Visitor,
                        public Family::MidiSettings::Visitor,
                        public SelectSettings<Family>::Visitor,
                        public ChangeBooleanSettings<Family>::Visitor,
                        public ChangeNoteToggleSettings<Family>::Visitor,
                        public SelectControlSettings<Family>::Visitor,
                        public LoadPresetSettings<Family>::Visitor,
                        public MoveWindowSettings<Family>::Visitor {};

} // namespace Backend::Actions
