#include "values/RelativeFixedValue.h"

#include "values/TextNumbers.h"

#include <algorithm>
#include <limits>

RelativeFixedValue::RelativeFixedValue(std::string_view text) noexcept {
    text = trimmed(text);
    relative_ = text.empty() || text.front() == '+' || text.front() == '-';
    value_ = readDecimal(text).value_or(0);
}

std::int32_t RelativeFixedValue::applyTo(std::int32_t number) const noexcept {
    if (!relative_) {
        return value_;
    }
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(std::int64_t{number} + value_, lowest, highest));
}

std::string RelativeFixedValue::toXmlString() const {
    if (relative_ && value_ == 0) {
        return {};
    }
    return (relative_ && value_ > 0 ? "+" : "") + std::to_string(value_);
}
