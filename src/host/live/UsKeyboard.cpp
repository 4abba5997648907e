#include "host/live/UsKeyboard.h"

#include <array>
#include <string_view>

namespace Host {

namespace {

struct Punctuation {
    char plain;
    char shifted;
    std::uint32_t code;
};
constexpr std::array punctuation = std::to_array<Punctuation>({{';', ':', 186},
                                                               {'=', '+', 187},
                                                               {',', '<', 188},
                                                               {'-', '_', 189},
                                                               {'.', '>', 190},
                                                               {'/', '?', 191},
                                                               {'`', '~', 192},
                                                               {'[', '{', 219},
                                                               {'\\', '|', 220},
                                                               {']', '}', 221},
                                                               {'\'', '"', 222}});
constexpr std::string_view overDigits = ")!@#$%^&*("; // by digit

} // namespace

std::optional<Key> keyOfCharacter(std::uint32_t character) noexcept {
    if (character < 0x20 || character > 0x7E) {
        return std::nullopt;
    }
    const char c = static_cast<char>(character);
    if (c == ' ' || (c >= '0' && c <= '9')) {
        return Key(character);
    }
    if (c >= 'a' && c <= 'z') {
        return Key(character - 'a' + 'A');
    }
    if (c >= 'A' && c <= 'Z') {
        return Key(character, Key::SHIFT);
    }
    if (const auto digit = overDigits.find(c); digit != std::string_view::npos) {
        return Key('0' + static_cast<std::uint32_t>(digit), Key::SHIFT);
    }
    for (const Punctuation& row : punctuation) {
        if (c == row.plain || c == row.shifted) {
            return Key(row.code, c == row.shifted ? Key::SHIFT : 0U);
        }
    }
    return std::nullopt;
}

Key withoutOwnModifier(const Key& key) noexcept {
    std::uint32_t own = 0;
    switch (key.getCode()) {
    case leftShiftCode:
    case rightShiftCode:
        own = Key::SHIFT;
        break;
    case leftControlCode:
    case rightControlCode:
        own = Key::CONTROL;
        break;
    case leftAltCode:
    case rightAltCode:
        own = Key::ALT;
        break;
    case leftWindowsCode:
    case rightWindowsCode:
        own = Key::WIN;
        break;
    default:
        break;
    }
    return Key(key.getCode(), key.getModifiers() & ~own);
}

} // namespace Host
