// What functions are configured with: one type for each kind of setting, whatever the function does with it.
#pragma once

#include "values/NoteToggle.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectControlType.h"
#include "values/SelectType.h"

#include <cstdint>
#include <string>

namespace Backend::FunctionManagement {

class FunctionSettingsVisitor;

class FunctionSettingsType {
public:
    virtual ~FunctionSettingsType() = default;
    // Calls the visit of the settings' own type, which may change them.
    virtual void accept(FunctionSettingsVisitor& visitor) = 0;

protected:
    FunctionSettingsType() = default;
    FunctionSettingsType(const FunctionSettingsType&) = default;
    FunctionSettingsType& operator=(const FunctionSettingsType&) = default;
};

// Gives a settings type its nested Visitor.
template <typename Type> class VisitableSettings : public FunctionSettingsType {
public:
    class Visitor {
    public:
        virtual ~Visitor() = default;
        virtual void visit(Type& settings) = 0;
    };

    void accept(FunctionSettingsVisitor& visitor) override;
};

struct NoFunctionSettingsType : VisitableSettings<NoFunctionSettingsType> {};

struct ActionSettingsType : VisitableSettings<ActionSettingsType> {};

struct OnOffToggleSettingsType : VisitableSettings<OnOffToggleSettingsType> {
    OnOffToggle type;
};

// A message with its way. A message without data ignores them, one with 14 bits has its low seven in d1.
struct MidiSettingsType : VisitableSettings<MidiSettingsType> {
    static constexpr std::uint8_t NOT_SET = 255;

    std::uint8_t zone = NOT_SET;   // 255: no zone
    std::uint8_t output = NOT_SET; // 255: the default output
    std::int8_t channel = -1;      // 0..15; -1: the default channel
    std::uint8_t d1 = 0;           // 0..127; as a note also 255: none, and nothing is sent
    std::uint8_t d2 = 0;           // 0..127

    [[nodiscard]] int getValue14() const { return d1 | d2 << 7; }
    void setValue14(int value) { // 0..16383
        d1 = static_cast<std::uint8_t>(value & 0x7F);
        d2 = static_cast<std::uint8_t>(value >> 7);
    }
};

// Some functions use one of the two only.
struct SelectSettingsType : VisitableSettings<SelectSettingsType> {
    SelectType type;
    RelativeFixedValue value;
};

struct ChangeBooleanSettingsType : VisitableSettings<ChangeBooleanSettingsType> {
    SelectType type;
    OnOffToggle value;
};

struct ChangeNoteToggleSettingsType : VisitableSettings<ChangeNoteToggleSettingsType> {
    SelectType type;
    NoteToggle value;
};

// The value is that of ChangeControl only.
struct SelectControlSettingsType : VisitableSettings<SelectControlSettingsType> {
    SelectControlType type;
    RelativeFixedValue value;
};

struct LoadPresetSettingsType : VisitableSettings<LoadPresetSettingsType> {
    std::string preset;
};

struct MoveWindowSettingsType : VisitableSettings<MoveWindowSettingsType> {
    RelativeFixedValue x;
    RelativeFixedValue y;
};

// Reads and edits the settings of a function without knowing its class.
class FunctionSettingsVisitor : public NoFunctionSettingsType::Visitor,
                                public ActionSettingsType::Visitor,
                                public OnOffToggleSettingsType::Visitor,
                                public MidiSettingsType::Visitor,
                                public SelectSettingsType::Visitor,
                                public ChangeBooleanSettingsType::Visitor,
                                public ChangeNoteToggleSettingsType::Visitor,
                                public SelectControlSettingsType::Visitor,
                                public LoadPresetSettingsType::Visitor,
                                public MoveWindowSettingsType::Visitor {};

template <typename Type> void VisitableSettings<Type>::accept(FunctionSettingsVisitor& visitor) {
    static_cast<Visitor&>(visitor).visit(static_cast<Type&>(*this));
}

} // namespace Backend::FunctionManagement
