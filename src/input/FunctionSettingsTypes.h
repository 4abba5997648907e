// What functions are configured with.
#pragma once

#include "input/ActionSettings.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <cstdint>

namespace Backend::FunctionManagement {

struct MidiForm;
struct MidiSettingsType;

// Functions say what they mean themselves.
struct FunctionFamily {
    using Selection = SelectType;
    using Number = RelativeFixedValue;
    using MidiSettings = MidiSettingsType;
    using FormOfMidi = MidiForm;

    // What a setting becomes in the call.
    template <typename Value> [[nodiscard]] static const Value& argument(const Value& setting) { return setting; }
};

using FunctionSettingsType = Actions::SettingsType<FunctionFamily>;
using FunctionSettingsVisitor = Actions::SettingsVisitor<FunctionFamily>;

using NoFunctionSettingsType = Actions::NoSettings<FunctionFamily>;
using ActionSettingsType = Actions::PlainSettings<FunctionFamily>;
using OnOffToggleSettingsType = Actions::OnOffToggleSettings<FunctionFamily>;
using SelectSettingsType = Actions::SelectSettings<FunctionFamily>;
using ChangeBooleanSettingsType = Actions::ChangeBooleanSettings<FunctionFamily>;
using ChangeNoteToggleSettingsType = Actions::ChangeNoteToggleSettings<FunctionFamily>;
using SelectControlSettingsType = Actions::SelectControlSettings<FunctionFamily>;
using LoadPresetSettingsType = Actions::LoadPresetSettings<FunctionFamily>;
using MoveWindowSettingsType = Actions::MoveWindowSettings<FunctionFamily>;

// A message with its way. A message without data ignores them, one with 14 bits has its low seven in d1.
struct MidiSettingsType : Actions::VisitableSettings<FunctionFamily, MidiSettingsType> {
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

} // namespace Backend::FunctionManagement
