// Between our byte strings (UTF-8) and the system's UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace Platform {

// Any bytes survive the way there and back: one that is no UTF-8 becomes a lone surrogate (U+DC80 to U+DCFF).
[[nodiscard]] std::wstring wideOf(std::string_view text);
[[nodiscard]] std::string bytesOf(std::wstring_view wide);

// The system's words for one of its error numbers.
[[nodiscard]] std::string textOfSystemError(unsigned long error);

} // namespace Platform
