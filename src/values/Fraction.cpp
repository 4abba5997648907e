#include "values/Fraction.h"

#include "values/TextNumbers.h"

#include <algorithm>
#include <limits>

Fraction::Fraction(std::int32_t numerator, std::int32_t denominator) noexcept {
    if (denominator != 0) {
        numerator_ = numerator;
        denominator_ = denominator;
    }
}

Fraction::Fraction(std::string_view text) noexcept {
    const auto bar = text.find('_');
    if (bar == std::string_view::npos) {
        return;
    }
    const auto numerator = readDecimal(text.substr(0, bar));
    const auto denominator = readDecimal(text.substr(bar + 1));
    if (numerator && denominator) {
        *this = Fraction(*numerator, *denominator);
    }
}

std::int32_t Fraction::scale(std::int32_t number) const noexcept {
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(std::int64_t{numerator_} * number / denominator_, lowest, highest));
}

std::string Fraction::toDisplayString() const {
    return std::to_string(numerator_) + "/" + std::to_string(denominator_);
}

std::string Fraction::toXmlString() const {
    return std::to_string(numerator_) + "_" + std::to_string(denominator_);
}
