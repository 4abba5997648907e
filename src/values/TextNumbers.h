// Numbers and words in the text of attributes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// The decimal number with which the text begins, after white space and a sign; what follows it is ignored. Saturates
// at 32 bits. Nothing when there is no digit.
[[nodiscard]] std::optional<std::int32_t> readDecimal(std::string_view text) noexcept;

// True when nothing but white space surrounds the number.
[[nodiscard]] bool isDecimal(std::string_view text) noexcept;

// Without the white space around it.
[[nodiscard]] std::string_view trimmed(std::string_view text) noexcept;
