#include "values/TextNumbers.h"

#include <limits>

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

bool isDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

} // namespace

std::string_view trimmed(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

std::optional<std::int32_t> readDecimal(std::string_view text) noexcept {
    text = trimmed(text);
    const auto negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    if (text.empty() || !isDigit(text.front())) {
        return std::nullopt;
    }
    constexpr std::int64_t beyond = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
    std::int64_t number = 0;
    for (const auto c : text) {
        if (!isDigit(c) || number >= beyond) {
            break;
        }
        number = number * 10 + (c - '0');
    }
    if (number >= beyond) {
        return negative ? std::numeric_limits<std::int32_t>::min() : std::numeric_limits<std::int32_t>::max();
    }
    return static_cast<std::int32_t>(negative ? -number : number);
}

bool isDecimal(std::string_view text) noexcept {
    text = trimmed(text);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        text.remove_prefix(1);
    }
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}
