// The encoding of all text that the program reads.
#pragma once

#include <string_view>

namespace Host {

// True of well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
[[nodiscard]] bool isUtf8(std::string_view text) noexcept;

} // namespace Host
