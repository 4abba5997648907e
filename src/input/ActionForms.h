// How the settings of an action follow from its call: their type, their XML attributes, and how they become the
// arguments of the call. Functions and translations have the same forms.
#pragma once

#include "input/Action.h"
#include "input/ActionAttributes.h"
#include "input/ActionSettings.h"
#include "input/MidiEventIdentity.h"
#include "values/QelMidiMessage.h"
#include "values/XmlWriter.h"

#include <optional>
#include <string_view>
#include <tuple>
#include <vector>

namespace Backend::Actions {

// One setting. `member` is where it stands in the settings type.
template <typename Settings, typename Value> struct Field {
    std::string_view name;
    Value Settings::*member;
    std::string_view meaning;
};
template <typename Settings, typename Value>
Field(const char*, Value Settings::*, const char*) -> Field<Settings, Value>;

// A form over Form::fields, a tuple of Field in the order of the call's arguments and of the attributes. The family
// makes the arguments: of the setting, and of the event where its settings speak of one.
template <typename Family, typename Form, typename SettingsOfForm> struct FieldForm {
    using Settings = SettingsOfForm;

    [[nodiscard]] static std::vector<AttributeFormat> attributes(const auto&) {
        std::vector<AttributeFormat> formats;
        forEachField([&]<typename Value>(const Field<Settings, Value>& field) {
            formats.push_back(attributeOf<Value>(field.name, field.meaning));
        });
        return formats;
    }
    static void read(const auto&, const Platform::XmlElement& element, Settings& settings) {
        forEachField([&](const auto& field) { readAttribute(element, field.name, settings.*field.member); });
    }
    static void write(const auto&, const Settings& settings, XmlWriter& xml) {
        forEachField([&](const auto& field) { xml.attribute(field.name, settings.*field.member); });
    }
    [[nodiscard]] static bool equal(const Settings& a, const Settings& b) {
        bool same = true;
        forEachField([&](const auto& field) { same = same && a.*field.member == b.*field.member; });
        return same;
    }
    static void perform(const auto& call, const Settings& settings, QelIF& qel, const auto&... event) {
        std::apply(
            [&](const auto&... field) {
                performIfAll(call, qel, Family::argument(settings.*field.member, event...)...);
            },
            Form::fields);
    }
    [[nodiscard]] static MidiEventIdentity midiEvent(const auto&, const Settings&, const auto&...) { return {}; }
    [[nodiscard]] static std::optional<MidiEngine::QelMidiMessage> midiMessage(const auto&, const Settings&,
                                                                               const auto&...) {
        return std::nullopt;
    }

private:
    static void forEachField(auto&& work) {
        std::apply([&](const auto&... field) { (work(field), ...); }, Form::fields);
    }
};

// The form of each kind of call.
template <typename Family, typename Call> struct FormOfCall;

template <typename Family> struct FormOfCall<Family, SendMidi> : Family::FormOfMidi {};

template <typename Family>
struct FormOfCall<Family, NoOperation> : FieldForm<Family, FormOfCall<Family, NoOperation>, NoSettings<Family>> {
    static constexpr std::tuple<> fields{};
    static void perform(const NoOperation&, const NoSettings<Family>&, QelIF&, const auto&...) {}
};

template <typename Family>
struct FormOfCall<Family, Operation<>> : FieldForm<Family, FormOfCall<Family, Operation<>>, PlainSettings<Family>> {
    static constexpr std::tuple<> fields{};
};

template <typename Family> struct OnOffForm : FieldForm<Family, OnOffForm<Family>, OnOffToggleSettings<Family>> {
    static constexpr std::tuple fields{
        Field{"type", &OnOffToggleSettings<Family>::type, "Switch it on, off or to the other state."}};
};
template <typename Family> struct FormOfCall<Family, Operation<const OnOffToggle&>> : OnOffForm<Family> {};
template <typename Family> struct FormOfCall<Family, Operation<const OnOffToggle&, bool>> : OnOffForm<Family> {};
template <typename Family> struct FormOfCall<Family, void (*)(QelIF&, const OnOffToggle&)> : OnOffForm<Family> {};

template <typename Family>
struct FormOfCall<Family, Operation<const SelectType&>>
    : FieldForm<Family, FormOfCall<Family, Operation<const SelectType&>>, SelectSettings<Family>> {
    static constexpr std::tuple fields{Field{"type", &SelectSettings<Family>::type, "Which one."}};
};

template <typename Family>
struct FormOfCall<Family, Operation<const RelativeFixedValue&, bool>>
    : FieldForm<Family, FormOfCall<Family, Operation<const RelativeFixedValue&, bool>>, SelectSettings<Family>> {
    static constexpr std::tuple fields{
        Field{"value", &SelectSettings<Family>::value, "The new value or the step to it."}};
};

template <typename Family>
struct FormOfCall<Family, Operation<const SelectType&, const RelativeFixedValue&>>
    : FieldForm<Family, FormOfCall<Family, Operation<const SelectType&, const RelativeFixedValue&>>,
                SelectSettings<Family>> {
    static constexpr std::tuple fields{
        Field{"type", &SelectSettings<Family>::type, "Which one."},
        Field{"value", &SelectSettings<Family>::value, "The new value or the step to it."}};
};

template <typename Family>
struct FormOfCall<Family, Operation<const SelectType&, const OnOffToggle&>>
    : FieldForm<Family, FormOfCall<Family, Operation<const SelectType&, const OnOffToggle&>>,
                ChangeBooleanSettings<Family>> {
    static constexpr std::tuple fields{
        Field{"type", &ChangeBooleanSettings<Family>::type, "Which one."},
        Field{"value", &ChangeBooleanSettings<Family>::value, "Switch it on, off or to the other state."}};
};

template <typename Family>
struct FormOfCall<Family, Operation<const SelectType&, const NoteToggle&>>
    : FieldForm<Family, FormOfCall<Family, Operation<const SelectType&, const NoteToggle&>>,
                ChangeNoteToggleSettings<Family>> {
    static constexpr std::tuple fields{
        Field{"type", &ChangeNoteToggleSettings<Family>::type, "Which one."},
        Field{"value", &ChangeNoteToggleSettings<Family>::value, "How a key that is pressed again is treated."}};
};

template <typename Family>
struct FormOfCall<Family, Operation<const SelectControlType&>>
    : FieldForm<Family, FormOfCall<Family, Operation<const SelectControlType&>>, SelectControlSettings<Family>> {
    static constexpr std::tuple fields{Field{"type", &SelectControlSettings<Family>::type, "Which control."}};
};

template <typename Family>
struct FormOfCall<Family, Operation<const SelectControlType&, const RelativeFixedValue&>>
    : FieldForm<Family, FormOfCall<Family, Operation<const SelectControlType&, const RelativeFixedValue&>>,
                SelectControlSettings<Family>> {
    static constexpr std::tuple fields{
        Field{"type", &SelectControlSettings<Family>::type, "Which control."},
        Field{"value", &SelectControlSettings<Family>::value, "The new value or the step to it."}};
};

template <typename Family>
struct FormOfCall<Family, Operation<const std::string&>>
    : FieldForm<Family, FormOfCall<Family, Operation<const std::string&>>, LoadPresetSettings<Family>> {
    static constexpr std::tuple fields{Field{"preset", &LoadPresetSettings<Family>::preset, "The name of the preset."}};
};

template <typename Family>
struct FormOfCall<Family, Operation<const RelativeFixedValue&, const RelativeFixedValue&>>
    : FieldForm<Family, FormOfCall<Family, Operation<const RelativeFixedValue&, const RelativeFixedValue&>>,
                MoveWindowSettings<Family>> {
    static constexpr std::tuple fields{
        Field{"x", &MoveWindowSettings<Family>::x, "To the right, or the new place from the left."},
        Field{"y", &MoveWindowSettings<Family>::y, "Downward, or the new place from the top."}};
};

} // namespace Backend::Actions
