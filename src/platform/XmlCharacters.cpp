#include "platform/XmlCharacters.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Platform {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

template <std::size_t count> bool isIn(const std::array<Range, count>& ranges, char32_t value) noexcept {
    return std::any_of(ranges.begin(), ranges.end(),
                       [value](const Range& range) { return value >= range.first && value <= range.last; });
}

} // namespace

std::string asXmlText(std::string_view text) {
    std::string kept;
    while (!text.empty()) {
        const CodePoint point = firstCodePoint(text);
        kept += point.length > 0 && isXmlChar(point.value) ? text.substr(0, point.length) : " ";
        text.remove_prefix(std::max<std::size_t>(point.length, 1));
    }
    return kept;
}

bool isXmlChar(char32_t c) noexcept {
    return c >= 0x20 ? c != 0xFFFE && c != 0xFFFF && !(c >= 0xD800 && c <= 0xDFFF) && c <= 0x10FFFF
                     : c == '\t' || c == '\n' || c == '\r';
}

bool isXmlNameStart(char32_t c) noexcept {
    static constexpr std::array<Range, 12> highRanges{{{0xC0, 0xD6},
                                                       {0xD8, 0xF6},
                                                       {0xF8, 0x2FF},
                                                       {0x370, 0x37D},
                                                       {0x37F, 0x1FFF},
                                                       {0x200C, 0x200D},
                                                       {0x2070, 0x218F},
                                                       {0x2C00, 0x2FEF},
                                                       {0x3001, 0xD7FF},
                                                       {0xF900, 0xFDCF},
                                                       {0xFDF0, 0xFFFD},
                                                       {0x10000, 0xEFFFF}}};
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || (c >= 0x80 && isIn(highRanges, c));
}

bool isXmlNameChar(char32_t c) noexcept {
    static constexpr std::array<Range, 3> furtherRanges{{{0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}}};
    return isXmlNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.' || isIn(furtherRanges, c);
}

} // namespace Platform
