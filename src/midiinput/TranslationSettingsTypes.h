// What translations are configured with.
#pragma once

#include "input/ActionSettings.h"
#include "midiinput/ChannelTranslation.h"
#include "midiinput/MidiTranslationValue.h"
#include "midiinput/TranslationSelection.h"
#include "values/QelMidiMessage.h"

#include <cstdint>
#include <optional>

namespace Backend::MidiInput::TranslationManagement {

struct MidiSettingsType;
struct TranslationMidiForm;

// Translations take what they mean from the incoming message.
struct TranslationFamily {
    using Selection = TranslationSelection;
    using Number = MidiTranslationValue;
    using MidiSettings = MidiSettingsType;
    using FormOfMidi = TranslationMidiForm;

    // What a setting becomes in the call for this message.
    [[nodiscard]] static std::optional<SelectType> argument(const Selection& setting,
                                                            const MidiEngine::QelMidiMessage& incoming) {
        return setting.forMessage(incoming.getMidiMessage());
    }
    [[nodiscard]] static RelativeFixedValue argument(const Number& setting,
                                                     const MidiEngine::QelMidiMessage& incoming) {
        return setting.asChange(incoming.getMidiMessage());
    }
    template <typename Value>
    [[nodiscard]] static const Value& argument(const Value& setting, const MidiEngine::QelMidiMessage&) {
        return setting;
    }
};

using TranslationSettingsType = Actions::SettingsType<TranslationFamily>;
using TranslationSettingsVisitor = Actions::SettingsVisitor<TranslationFamily>;

using DoNothingSettingsType = Actions::NoSettings<TranslationFamily>;
using ActionSettingsType = Actions::PlainSettings<TranslationFamily>;
using OnOffToggleSettingsType = Actions::OnOffToggleSettings<TranslationFamily>;
using SelectSettingsType = Actions::SelectSettings<TranslationFamily>;
using ChangeBooleanSettingsType = Actions::ChangeBooleanSettings<TranslationFamily>;
using ChangeNoteToggleSettingsType = Actions::ChangeNoteToggleSettings<TranslationFamily>;
using SelectControlSettingsType = Actions::SelectControlSettings<TranslationFamily>;
using LoadPresetSettingsType = Actions::LoadPresetSettings<TranslationFamily>;
using MoveWindowSettingsType = Actions::MoveWindowSettings<TranslationFamily>;

// A message with its way.
struct MidiSettingsType : Actions::VisitableSettings<TranslationFamily, MidiSettingsType> {
    static constexpr std::uint8_t NOT_SET = 255;

    std::uint8_t zone = NOT_SET;   // 255: no zone
    std::uint8_t output = NOT_SET; // 255: that of the incoming message
    ChannelTranslation channel;
    MidiTranslationValue d1;
    MidiTranslationValue d2;
};

} // namespace Backend::MidiInput::TranslationManagement
