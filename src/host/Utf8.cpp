#include "host/Utf8.h"

#include <cstddef>

namespace Host {

bool isUtf8(std::string_view text) noexcept {
    const auto byteAt = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    for (std::size_t at = 0; at < text.size();) {
        const unsigned char first = byteAt(at);
        if (first < 0x80) {
            ++at;
            continue;
        }
        const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
        if (first < 0xC2 || first > 0xF4 || text.size() - at < length) {
            return false;
        }
        // The second byte is where overlong forms, surrogates and numbers that are too great show.
        const unsigned char least = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
        const unsigned char greatest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
        if (byteAt(at + 1) < least || byteAt(at + 1) > greatest) {
            return false;
        }
        for (std::size_t next = at + 2; next < at + length; ++next) {
            if ((byteAt(next) & 0xC0) != 0x80) {
                return false;
            }
        }
        at += length;
    }
    return true;
}

} // namespace Host
