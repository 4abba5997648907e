// Reading UTF-8 one code point at a time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Platform {

struct CodePoint {
    char32_t value = 0;
    std::size_t length = 0; // bytes; 0: what stands there is not UTF-8 (overlong forms and surrogates neither)
};

// The code point at the start of a text that is not empty.
[[nodiscard]] CodePoint firstCodePoint(std::string_view text) noexcept;

[[nodiscard]] bool isUtf8(std::string_view text) noexcept;

// For a terminal, which obeys control characters: each is "?" (those of ASCII, and those that UTF-8 adds to them). What
// comes from files and other programs may hold some.
[[nodiscard]] std::string withoutControls(std::string_view text);

} // namespace Platform
