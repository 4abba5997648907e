// A number that either replaces another or is added to it.
#pragma once

#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

class RelativeFixedValue final : public XmlItem {
public:
    // Relative 0: no change.
    RelativeFixedValue() = default;
    // Text, trimmed: relative when it is empty or begins with "+" or "-", else fixed. No number reads as 0.
    explicit RelativeFixedValue(std::string_view text) noexcept;
    [[nodiscard]] static RelativeFixedValue relative(std::int32_t value) noexcept { return {true, value}; }
    [[nodiscard]] static RelativeFixedValue fixed(std::int32_t value) noexcept { return {false, value}; }

    [[nodiscard]] bool isRelative() const noexcept { return relative_; }
    [[nodiscard]] bool isFixed() const noexcept { return !relative_; }
    [[nodiscard]] bool isNoChange() const noexcept { return relative_ && value_ == 0; }
    [[nodiscard]] std::int32_t getValue() const noexcept { return value_; }
    void setValue(std::int32_t value) noexcept { value_ = value; }

    // What a number becomes: the sum, or the value itself. Saturates.
    [[nodiscard]] std::int32_t applyTo(std::int32_t number) const noexcept;

    // "+5", "-5", "" for relative 0; "5" for fixed. A fixed negative number reads back as relative.
    [[nodiscard]] std::string toXmlString() const override;

    friend bool operator==(const RelativeFixedValue& a, const RelativeFixedValue& b) noexcept {
        return a.relative_ == b.relative_ && a.value_ == b.value_;
    }

private:
    RelativeFixedValue(bool relative, std::int32_t value) noexcept : value_(value), relative_(relative) {}

    std::int32_t value_ = 0;
    bool relative_ = true;
};
