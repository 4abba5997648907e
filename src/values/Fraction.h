// A ratio of two whole numbers.
#pragma once

#include "values/XmlItem.h"

#include <cstdint>
#include <string>
#include <string_view>

class Fraction final : public XmlItem {
public:
    // 1/1.
    Fraction() = default;
    // A denominator of 0 makes it 1/1. Not reduced.
    Fraction(std::int32_t numerator, std::int32_t denominator) noexcept;
    // "3_4"; a text without two numbers, or with 0 below, is 1/1.
    explicit Fraction(std::string_view text) noexcept;

    [[nodiscard]] std::int32_t getNumerator() const noexcept { return numerator_; }
    [[nodiscard]] std::int32_t getDenominator() const noexcept { return denominator_; }
    [[nodiscard]] bool isOne() const noexcept { return numerator_ == 1 && denominator_ == 1; }

    // numerator x number / denominator, toward zero, saturating.
    [[nodiscard]] std::int32_t scale(std::int32_t number) const noexcept;

    [[nodiscard]] std::string toDisplayString() const;      // "3/4"
    [[nodiscard]] std::string toXmlString() const override; // "3_4"

    // As written: 2/2 is not 1/1.
    friend bool operator==(const Fraction& a, const Fraction& b) noexcept {
        return a.numerator_ == b.numerator_ && a.denominator_ == b.denominator_;
    }

private:
    std::int32_t numerator_ = 1;
    std::int32_t denominator_ = 1;
};
