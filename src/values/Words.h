// Lists of words that stand for numbers.
#pragma once

#include <algorithm>
#include <optional>
#include <string_view>

// Equal but for the case of ASCII letters.
[[nodiscard]] inline bool equalInAnyCase(std::string_view a, std::string_view b) noexcept {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

// The place of exactly that word in the list, nothing when it is not there.
template <typename List> [[nodiscard]] std::optional<int> placeOf(std::string_view word, const List& list) noexcept {
    const auto found = std::find(std::begin(list), std::end(list), word);
    if (found == std::end(list)) {
        return std::nullopt;
    }
    return static_cast<int>(found - std::begin(list));
}
