#include "host/live/ConsoleKey.h"

#include "host/live/UsKeyboard.h"

#include <string_view>

namespace Host {

namespace {

// What the keys from a scan code on type, without Shift.
struct Row {
    std::uint16_t first;
    std::string_view characters;
};
constexpr Row rows[]{
    {0x02, "1234567890-="}, {0x10, "qwertyuiop[]"}, {0x1E, "asdfghjkl;'`"}, {0x2B, "\\zxcvbnm,./"}, {0x39, " "}};
constexpr std::uint16_t firstOfNumpad = 0x47;
constexpr std::string_view numpadKeys = "789-456+1230.";

std::uint32_t codeOfNumpad(char c) {
    switch (c) {
    case '-':
        return numpadMinusCode;
    case '+':
        return numpadPlusCode;
    case '.':
        return numpadPointCode;
    default:
        return numpad0Code + static_cast<std::uint32_t>(c - '0');
    }
}

std::uint32_t codeByPlace(const ConsoleKey& key) {
    if (key.isExtended) {
        return Key::NO_CODE;
    }
    for (const Row& row : rows) {
        if (key.scanCode >= row.first && key.scanCode < row.first + row.characters.size()) {
            const auto c = static_cast<unsigned char>(row.characters[key.scanCode - row.first]);
            return keyOfCharacter(c)->getCode();
        }
    }
    if (key.scanCode >= firstOfNumpad && key.scanCode < firstOfNumpad + numpadKeys.size()) {
        return codeOfNumpad(numpadKeys[key.scanCode - firstOfNumpad]);
    }
    return Key::NO_CODE;
}

// The system's codes are ours but for these.
std::uint32_t codeByMeaning(const ConsoleKey& key) {
    constexpr std::uint16_t returnKey = 0x0D;
    constexpr std::uint16_t shift = 0x10;
    constexpr std::uint16_t control = 0x11;
    constexpr std::uint16_t alt = 0x12;
    constexpr std::uint16_t snapshot = 0x2C;
    constexpr std::uint16_t leftShift = 0xA0;
    constexpr std::uint16_t leftControl = 0xA2;
    constexpr std::uint16_t rightControl = 0xA3;
    constexpr std::uint16_t scanOfRightShift = 0x36;
    switch (key.virtualKey) {
    case returnKey:
        return key.isExtended ? numpadEnterCode : enterCode;
    case shift:
        return key.scanCode == scanOfRightShift ? rightShiftCode : leftShiftCode;
    case control:
        return key.isExtended ? rightControlCode : leftControlCode;
    case alt:
        return key.isExtended ? rightAltCode : leftAltCode;
    case snapshot:
        return printScreenCode;
    case leftShift:
        return leftShiftCode;
    case leftControl:
        return leftControlCode;
    case rightControl:
        return rightControlCode;
    default:
        return Key(key.virtualKey).getName() == "Unknown" ? Key::NO_CODE : key.virtualKey;
    }
}

} // namespace

Key keyOf(const ConsoleKey& key) noexcept {
    // Pause has the scan code of Num Lock, which lies in no row.
    const std::uint32_t byPlace = codeByPlace(key);
    const std::uint32_t code = byPlace != Key::NO_CODE ? byPlace : codeByMeaning(key);
    return code == Key::NO_CODE ? Key() : withoutOwnModifier(Key(code, key.modifiers));
}

} // namespace Host
