// What an input can make the program do. Functions (of keys, controls and joysticks) and translations (of incoming
// MIDI) are two families over the same actions.
#pragma once

#include "core/QelIF.h"
#include "values/MessageType.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace Backend::Actions {

// An operation of the facade with the values that a family takes from its settings.
template <typename... Values> using Operation = void (QelIF::*)(Values...);

struct NoOperation {};
// playMidi with a message of that type.
struct SendMidi {
    MidiEngine::MessageType type;
};

// The kind of call decides what is to be set of an action: it has one setting for each value of the operation. A last
// argument of type bool is none of them: the user interface is told.
using Call =
    std::variant<NoOperation, SendMidi, Operation<>, Operation<const OnOffToggle&>,
                 void (*)(QelIF&, const OnOffToggle&), Operation<const OnOffToggle&, bool>,
                 Operation<const SelectType&>, Operation<const RelativeFixedValue&, bool>,
                 Operation<const SelectType&, const RelativeFixedValue&>,
                 Operation<const SelectType&, const OnOffToggle&>, Operation<const SelectType&, const NoteToggle&>,
                 Operation<const SelectControlType&>, Operation<const SelectControlType&, const RelativeFixedValue&>,
                 Operation<const std::string&>, Operation<const RelativeFixedValue&, const RelativeFixedValue&>>;

struct Action {
    std::string_view function;    // the keyword of the function: its XML element; empty: there is none
    std::string_view translation; // the keyword of the translation; empty: there is none
    std::string_view displayName; // in lists; empty: it is not offered
    int helpId;                   // of its text in helpText()
    Call call;
};

// Makes the call that is in force for an action, with the values for it.
template <typename KindOfCall, typename... Values> void perform(KindOfCall call, QelIF& qel, const Values&... values) {
    if constexpr (std::is_invocable_v<KindOfCall, QelIF&, const Values&...>) {
        std::invoke(call, qel, values...);
    } else {
        std::invoke(call, qel, values..., true);
    }
}

// What may be missing, and what it is when it is there.
template <typename Value> [[nodiscard]] bool isThere(const Value&) {
    return true;
}
template <typename Value> [[nodiscard]] bool isThere(const std::optional<Value>& value) {
    return value.has_value();
}
template <typename Value> [[nodiscard]] const Value& whatIsThere(const Value& value) {
    return value;
}
template <typename Value> [[nodiscard]] const Value& whatIsThere(const std::optional<Value>& value) {
    return *value;
}
// Makes the call with arguments of which some may be missing: then nothing is done.
template <typename KindOfCall, typename... Arguments>
void performIfAll(KindOfCall call, QelIF& qel, const Arguments&... arguments) {
    if ((isThere(arguments) && ...)) {
        perform(call, qel, whatIsThere(arguments)...);
    }
}

} // namespace Backend::Actions
