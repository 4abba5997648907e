// A number that a translation takes from the incoming message, or has of its own.
#pragma once

#include "values/MidiMessage.h"
#include "values/RelativeFixedValue.h"
#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Backend::MidiInput::TranslationManagement {

class MidiTranslationValue final : public XmlItem {
public:
    // 3 is never read; it is written as a number.
    enum class Kind : std::int32_t {
        up = 0,
        down = 1,
        selected = 2,
        d1 = 4,
        d2 = 5,
        d1Offset = 6,
        d2Offset = 7,
        number = 8
    };

    // Relative 0: no change.
    MidiTranslationValue() = default;
    explicit MidiTranslationValue(Kind kind) noexcept : kind_(kind) {}
    explicit MidiTranslationValue(const RelativeFixedValue& number) noexcept : number_(number) {}
    // "D1", "D2 -5", "up", "down", "selected"; any other text is a RelativeFixedValue.
    explicit MidiTranslationValue(std::string_view text) noexcept;

    [[nodiscard]] Kind getKind() const noexcept { return kind_; }
    // Of kind number: the number; of the kinds with an offset: the offset.
    [[nodiscard]] const RelativeFixedValue& getNumber() const noexcept { return number_; }
    // It is a data byte of the incoming message, with or without offset.
    [[nodiscard]] bool isFromByte() const noexcept { return kind_ >= Kind::d1 && kind_ <= Kind::d2Offset; }

    // As a number for this message: the byte with its offset, or the number whether it is relative or not; 0 for "up",
    // "down" and "selected". Bytes are signed; saturates.
    [[nodiscard]] std::int32_t evaluate(const MidiEngine::MidiMessage& incoming) const noexcept;
    // As a new value or a step to it: what comes from a byte is fixed, "up", "down" and "selected" change nothing.
    [[nodiscard]] RelativeFixedValue asChange(const MidiEngine::MidiMessage& incoming) const noexcept;

    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const MidiTranslationValue& a, const MidiTranslationValue& b) noexcept {
        return a.kind_ == b.kind_ && a.number_ == b.number_;
    }

private:
    Kind kind_ = Kind::number;
    RelativeFixedValue number_;
};

} // namespace Backend::MidiInput::TranslationManagement
