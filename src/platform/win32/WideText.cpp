#include "platform/win32/WideText.h"

#include "platform/Utf8.h"

#include <system_error>

namespace Platform {
namespace {

constexpr bool isIn(char32_t value, char32_t first, char32_t last) {
    return value >= first && value <= last;
}

void appendUtf8(std::string& to, char32_t point) {
    const auto append = [&to](char32_t byte) { to += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (point < 0x80) {
        append(point);
    } else if (point < 0x800) {
        append(0xC0 | (point >> 6));
        append(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        append(0xE0 | (point >> 12));
        append(0x80 | ((point >> 6) & 0x3F));
        append(0x80 | (point & 0x3F));
    } else {
        append(0xF0 | (point >> 18));
        append(0x80 | ((point >> 12) & 0x3F));
        append(0x80 | ((point >> 6) & 0x3F));
        append(0x80 | (point & 0x3F));
    }
}

} // namespace

std::wstring wideOf(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        const CodePoint point = firstCodePoint(text);
        if (point.length == 0) {
            wide += static_cast<wchar_t>(0xDC00 + static_cast<unsigned char>(text.front()));
            text.remove_prefix(1);
            continue;
        }
        if (point.value < 0x10000) {
            wide += static_cast<wchar_t>(point.value);
        } else {
            wide += static_cast<wchar_t>(0xD800 + ((point.value - 0x10000) >> 10));
            wide += static_cast<wchar_t>(0xDC00 + ((point.value - 0x10000) & 0x3FF));
        }
        text.remove_prefix(point.length);
    }
    return wide;
}

std::string bytesOf(std::wstring_view wide) {
    std::string text;
    text.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const char32_t unit = wide[i];
        if (isIn(unit, 0xD800, 0xDBFF) && i + 1 < wide.size() && isIn(wide[i + 1], 0xDC00, 0xDFFF)) {
            appendUtf8(text, 0x10000 + ((unit - 0xD800) << 10) + (static_cast<char32_t>(wide[i + 1]) - 0xDC00));
            ++i;
        } else if (isIn(unit, 0xDC80, 0xDCFF)) {
            text += static_cast<char>(static_cast<unsigned char>(unit - 0xDC00));
        } else {
            appendUtf8(text, unit);
        }
    }
    return text;
}

std::string textOfSystemError(unsigned long error) {
    return std::system_category().message(static_cast<int>(error));
}

} // namespace Platform
