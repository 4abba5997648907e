#include "platform/Utf8.h"

namespace Platform {

CodePoint firstCodePoint(std::string_view text) noexcept {
    const auto byte = [text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char first = byte(0);
    if (first < 0x80) {
        return {first, 1};
    }
    const std::size_t length = first < 0xC2 ? 0U : first < 0xE0 ? 2U : first < 0xF0 ? 3U : first < 0xF5 ? 4U : 0U;
    if (length == 0 || text.size() < length) {
        return {};
    }
    char32_t value = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return {};
        }
        value = (value << 6) | (byte(i) & 0x3FU);
    }
    const bool isOverlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
    return isOverlong || isSurrogate || value > 0x10FFFF ? CodePoint{} : CodePoint{value, length};
}

bool isUtf8(std::string_view text) noexcept {
    while (!text.empty()) {
        const CodePoint point = firstCodePoint(text);
        if (point.length == 0) {
            return false;
        }
        text.remove_prefix(point.length);
    }
    return true;
}

std::string withoutControls(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        const bool isHighControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        i += isHighControl ? 1 : 0;
        result += byte < 0x20 || byte == 0x7F || isHighControl ? '?' : static_cast<char>(byte);
    }
    return result;
}

} // namespace Platform
