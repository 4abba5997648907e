// When a translation is executed: always, or when a data byte of the incoming message compares so to a number.
#pragma once

#include "values/MidiMessage.h"
#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Backend::MidiInput::TranslationManagement {

class MidiTranslationCondition final : public XmlItem {
public:
    enum class Byte : std::int32_t { off = 0, d1 = 1, d2 = 2 };
    enum class Operator : std::int32_t { lt = 0, gt = 1, le = 2, ge = 3, eq = 4, ne = 5 };

    // Always.
    MidiTranslationCondition() = default;
    MidiTranslationCondition(Byte byte, Operator comparison, std::int32_t value) noexcept
        : byte_(byte), operator_(comparison), value_(value) {}
    // Three words parted by single blanks: "D2 gt 63". Another first word than "D1" or "D2" is always, another second
    // one than an operator is "eq", no number is 0.
    explicit MidiTranslationCondition(std::string_view text) noexcept;

    [[nodiscard]] Byte getByte() const noexcept { return byte_; }
    [[nodiscard]] Operator getOperator() const noexcept { return operator_; }
    [[nodiscard]] std::int32_t getValue() const noexcept { return value_; }
    [[nodiscard]] bool isOff() const noexcept { return byte_ == Byte::off; }

    // The byte that is compared, as a signed number; 0 when none is.
    [[nodiscard]] std::int32_t comparedByte(const MidiEngine::MidiMessage& incoming) const noexcept;
    [[nodiscard]] bool holdsFor(const MidiEngine::MidiMessage& incoming) const noexcept;

    // "Off", "D2 gt 63".
    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const MidiTranslationCondition& a, const MidiTranslationCondition& b) noexcept {
        return a.byte_ == b.byte_ && a.operator_ == b.operator_ && a.value_ == b.value_;
    }

private:
    Byte byte_ = Byte::off;
    Operator operator_ = Operator::eq;
    std::int32_t value_ = 0;
};

} // namespace Backend::MidiInput::TranslationManagement
