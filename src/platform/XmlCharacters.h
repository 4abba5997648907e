// Which characters may stand where in an XML document: the productions of XML 1.0.
#pragma once

#include <string>
#include <string_view>

namespace Platform {

// The text with a blank for each byte or character that XML does not have.
[[nodiscard]] std::string asXmlText(std::string_view text);

[[nodiscard]] bool isXmlChar(char32_t value) noexcept;
// Without the colon, which means namespaces.
[[nodiscard]] bool isXmlNameStart(char32_t value) noexcept;
[[nodiscard]] bool isXmlNameChar(char32_t value) noexcept;

} // namespace Platform
