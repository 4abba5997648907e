// Which item of a list a translation means.
#pragma once

#include "midiinput/MidiTranslationValue.h"
#include "values/SelectType.h"

#include <optional>
#include <string>
#include <string_view>

namespace Backend::MidiInput::TranslationManagement {

// A MidiTranslationValue, or "all", which that cannot say.
class TranslationSelection final : public XmlItem {
public:
    // The selected item.
    TranslationSelection() = default;
    explicit TranslationSelection(const SelectType& which);
    // "all" exactly, else the text of a MidiTranslationValue.
    explicit TranslationSelection(std::string_view text) noexcept;

    // The item for this message: what comes from a byte is the fixed index of that value, and nothing when it is below
    // 0. A number is the fixed index whether it has a sign or not; no number at all is the selected item.
    [[nodiscard]] std::optional<SelectType> forMessage(const MidiEngine::MidiMessage& incoming) const noexcept;

    [[nodiscard]] bool isAll() const noexcept { return all_; }
    // Without meaning for "all".
    [[nodiscard]] const MidiTranslationValue& getValue() const noexcept { return value_; }

    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const TranslationSelection& a, const TranslationSelection& b) noexcept {
        return a.all_ == b.all_ && a.value_ == b.value_;
    }

private:
    MidiTranslationValue value_{MidiTranslationValue::Kind::selected};
    bool all_ = false;
};

} // namespace Backend::MidiInput::TranslationManagement
