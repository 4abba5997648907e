// Where the characters lie on a keyboard of the United States, whose keys the keyboard's map names.
#pragma once

#include "values/Key.h"

#include <cstdint>
#include <optional>

namespace Host {

// Codes of keys that type nothing (Key.h), as far as terminals name them.
enum KeyCode : std::uint32_t {
    printScreenCode = 5,
    backspaceCode = 8,
    tabCode = 9,
    enterCode = 13,
    leftShiftCode = 16,
    leftControlCode = 17,
    pauseCode = 19,
    capsLockCode = 20,
    escapeCode = 27,
    spaceCode = 32,
    pageUpCode = 33,
    pageDownCode = 34,
    endCode = 35,
    homeCode = 36,
    leftCode = 37,
    upCode = 38,
    rightCode = 39,
    downCode = 40,
    insertCode = 45,
    deleteCode = 46,
    leftWindowsCode = 91,
    rightWindowsCode = 92,
    menuCode = 93,
    numpad0Code = 96,
    numpadTimesCode = 106,
    numpadPlusCode = 107,
    numpadMinusCode = 109,
    numpadPointCode = 110,
    numpadSlashCode = 111,
    f1Code = 112,
    numLockCode = 144,
    scrollLockCode = 145,
    rightShiftCode = 161,
    leftAltCode = 164,
    rightAltCode = 165,
    rightControlCode = 225,
    numpadEnterCode = 226
};

// The key that types the character, with Shift where it takes that; nothing for a character that no key types.
[[nodiscard]] std::optional<Key> keyOfCharacter(std::uint32_t character) noexcept;

// The key's own modifier is not one that is held beside it.
[[nodiscard]] Key withoutOwnModifier(const Key& key) noexcept;

} // namespace Host
