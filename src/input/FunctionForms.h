// How the settings of a function follow from the call of its action: their type, their XML attributes, and how they
// become the arguments of the call.
#pragma once

#include "input/Action.h"
#include "input/ActionAttributes.h"
#include "input/FunctionSettingsTypes.h"
#include "input/MidiEventIdentity.h"
#include "input/MidiForm.h"
#include "values/XmlWriter.h"

#include <string_view>
#include <tuple>
#include <vector>

namespace Backend::FunctionManagement {

// One setting. `member` is where it stands in the settings type.
template <typename Settings, typename Value> struct Field {
    std::string_view name;
    Value Settings::*member;
    std::string_view meaning;
};
template <typename Settings, typename Value>
Field(const char*, Value Settings::*, const char*) -> Field<Settings, Value>;

// A form over Form::fields, a tuple of Field in the order of the call's arguments and of the attributes.
template <typename Form, typename SettingsType> struct FieldForm {
    using Settings = SettingsType;

    [[nodiscard]] static std::vector<AttributeFormat> attributes(const auto&) {
        std::vector<AttributeFormat> formats;
        forEachField([&]<typename Value>(const Field<Settings, Value>& field) {
            formats.push_back(Actions::attributeOf<Value>(field.name, field.meaning));
        });
        return formats;
    }
    static void read(const auto&, const Platform::XmlElement& element, Settings& settings) {
        forEachField([&](const auto& field) { Actions::readAttribute(element, field.name, settings.*field.member); });
    }
    static void write(const auto&, const Settings& settings, XmlWriter& xml) {
        forEachField([&](const auto& field) { xml.attribute(field.name, settings.*field.member); });
    }
    [[nodiscard]] static bool equal(const Settings& a, const Settings& b) {
        bool same = true;
        forEachField([&](const auto& field) { same = same && a.*field.member == b.*field.member; });
        return same;
    }
    static void perform(const auto& call, const Settings& settings, QelIF& qel) {
        std::apply([&](const auto&... field) { Actions::perform(call, qel, settings.*field.member...); }, Form::fields);
    }
    [[nodiscard]] static MidiEventIdentity midiEvent(const auto&, const Settings&) { return {}; }

private:
    static void forEachField(auto&& work) {
        std::apply([&](const auto&... field) { (work(field), ...); }, Form::fields);
    }
};

// The form of each kind of call.
template <typename Call> struct FormOfCall;

template <> struct FormOfCall<Actions::SendMidi> : MidiForm {};

template <>
struct FormOfCall<Actions::NoOperation> : FieldForm<FormOfCall<Actions::NoOperation>, NoFunctionSettingsType> {
    static constexpr std::tuple<> fields{};
    static void perform(const Actions::NoOperation&, const Settings&, QelIF&) {}
};

template <> struct FormOfCall<Actions::Operation<>> : FieldForm<FormOfCall<Actions::Operation<>>, ActionSettingsType> {
    static constexpr std::tuple<> fields{};
};

template <typename Call> struct OnOffForm : FieldForm<OnOffForm<Call>, OnOffToggleSettingsType> {
    static constexpr std::tuple fields{
        Field{"type", &OnOffToggleSettingsType::type, "Switch it on, off or to the other state."}};
};
template <>
struct FormOfCall<Actions::Operation<const OnOffToggle&>> : OnOffForm<Actions::Operation<const OnOffToggle&>> {};
template <>
struct FormOfCall<Actions::Operation<const OnOffToggle&, bool>>
    : OnOffForm<Actions::Operation<const OnOffToggle&, bool>> {};
template <>
struct FormOfCall<void (*)(QelIF&, const OnOffToggle&)> : OnOffForm<void (*)(QelIF&, const OnOffToggle&)> {};

template <>
struct FormOfCall<Actions::Operation<const SelectType&>>
    : FieldForm<FormOfCall<Actions::Operation<const SelectType&>>, SelectSettingsType> {
    static constexpr std::tuple fields{Field{"type", &SelectSettingsType::type, "Which one."}};
};

template <>
struct FormOfCall<Actions::Operation<const RelativeFixedValue&, bool>>
    : FieldForm<FormOfCall<Actions::Operation<const RelativeFixedValue&, bool>>, SelectSettingsType> {
    static constexpr std::tuple fields{Field{"value", &SelectSettingsType::value, "The new value or the step to it."}};
};

template <>
struct FormOfCall<Actions::Operation<const SelectType&, const RelativeFixedValue&>>
    : FieldForm<FormOfCall<Actions::Operation<const SelectType&, const RelativeFixedValue&>>, SelectSettingsType> {
    static constexpr std::tuple fields{Field{"type", &SelectSettingsType::type, "Which one."},
                                       Field{"value", &SelectSettingsType::value, "The new value or the step to it."}};
};

template <>
struct FormOfCall<Actions::Operation<const SelectType&, const OnOffToggle&>>
    : FieldForm<FormOfCall<Actions::Operation<const SelectType&, const OnOffToggle&>>, ChangeBooleanSettingsType> {
    static constexpr std::tuple fields{
        Field{"type", &ChangeBooleanSettingsType::type, "Which one."},
        Field{"value", &ChangeBooleanSettingsType::value, "Switch it on, off or to the other state."}};
};

template <>
struct FormOfCall<Actions::Operation<const SelectType&, const NoteToggle&>>
    : FieldForm<FormOfCall<Actions::Operation<const SelectType&, const NoteToggle&>>, ChangeNoteToggleSettingsType> {
    static constexpr std::tuple fields{
        Field{"type", &ChangeNoteToggleSettingsType::type, "Which one."},
        Field{"value", &ChangeNoteToggleSettingsType::value, "How a key that is pressed again is treated."}};
};

template <>
struct FormOfCall<Actions::Operation<const SelectControlType&>>
    : FieldForm<FormOfCall<Actions::Operation<const SelectControlType&>>, SelectControlSettingsType> {
    static constexpr std::tuple fields{Field{"type", &SelectControlSettingsType::type, "Which control."}};
};

template <>
struct FormOfCall<Actions::Operation<const SelectControlType&, const RelativeFixedValue&>>
    : FieldForm<FormOfCall<Actions::Operation<const SelectControlType&, const RelativeFixedValue&>>,
                SelectControlSettingsType> {
    static constexpr std::tuple fields{
        Field{"type", &SelectControlSettingsType::type, "Which control."},
        Field{"value", &SelectControlSettingsType::value, "The new value or the step to it."}};
};

template <>
struct FormOfCall<Actions::Operation<const std::string&>>
    : FieldForm<FormOfCall<Actions::Operation<const std::string&>>, LoadPresetSettingsType> {
    static constexpr std::tuple fields{Field{"preset", &LoadPresetSettingsType::preset, "The name of the preset."}};
};

template <>
struct FormOfCall<Actions::Operation<const RelativeFixedValue&, const RelativeFixedValue&>>
    : FieldForm<FormOfCall<Actions::Operation<const RelativeFixedValue&, const RelativeFixedValue&>>,
                MoveWindowSettingsType> {
    static constexpr std::tuple fields{
        Field{"x", &MoveWindowSettingsType::x, "To the right, or the new place from the left."},
        Field{"y", &MoveWindowSettingsType::y, "Downward, or the new place from the top."}};
};

} // namespace Backend::FunctionManagement
