#include "values/Key.h"

#include "values/Words.h"

#include <array>

namespace {

struct NamedModifier {
    Key::Modifier modifier;
    std::string_view prefix;
};

// In the order in which they stand in a name.
constexpr std::array<NamedModifier, 4> modifierPrefixes{
    {{Key::SHIFT, "Shift "}, {Key::CONTROL, "Control "}, {Key::ALT, "Alt "}, {Key::WIN, "Win "}}};

using Names = std::array<std::string, 256>; // by code, empty for one without a name

Names makeNames() {
    Names names;
    names[5] = "Print Screen";
    names[8] = "Backspace";
    names[9] = "Tab";
    names[13] = "Enter";
    names[16] = "Left Shift";
    names[17] = "Left Control";
    names[19] = "Pause";
    names[20] = "Caps Lock";
    names[27] = "Escape";
    names[32] = "Space";
    names[33] = "Page Up";
    names[34] = "Page Down";
    names[35] = "End";
    names[36] = "Home";
    names[37] = "Left";
    names[38] = "Up";
    names[39] = "Right";
    names[40] = "Down";
    names[45] = "Insert";
    names[46] = "Delete";
    for (char c = '0'; c <= '9'; ++c) {
        names[static_cast<std::size_t>(c)] = c; // 48..57
    }
    for (char c = 'A'; c <= 'Z'; ++c) {
        names[static_cast<std::size_t>(c)] = c; // 65..90
    }
    names[91] = "Left Windows";
    names[92] = "Right Windows";
    names[93] = "Windows Key";
    for (std::size_t i = 0; i <= 9; ++i) {
        names[96 + i] = "Numpad " + std::to_string(i);
    }
    names[106] = "Numpad *";
    names[107] = "Numpad +";
    names[109] = "Numpad -";
    names[110] = "Numpad .";
    names[111] = "Numpad /";
    for (std::size_t i = 1; i <= 12; ++i) {
        names[111 + i] = "F" + std::to_string(i);
    }
    names[144] = "Num Lock";
    names[145] = "Scroll Lock";
    names[161] = "Right Shift";
    names[164] = "Left Alt";
    names[165] = "Right Alt";
    names[186] = "Semicolon";
    names[187] = "Equals";
    names[188] = "Comma";
    names[189] = "Minus";
    names[190] = "Period";
    names[191] = "Slash";
    names[192] = "Quote";
    names[219] = "Left Bracket";
    names[220] = "Backslash";
    names[221] = "Right Bracket";
    names[222] = "Apostrophe";
    names[225] = "Right Control";
    names[226] = "Numpad Enter";
    return names;
}

const Names& codeNames() {
    static const Names names = makeNames();
    return names;
}

} // namespace

Key::Key(std::string_view name) noexcept {
    for (const auto& row : modifierPrefixes) {
        if (name.starts_with(row.prefix)) {
            modifiers_ = static_cast<std::uint8_t>(modifiers_ | row.modifier);
            name.remove_prefix(row.prefix.size());
        }
    }
    if (!name.empty()) {
        const auto place = placeOf(name, codeNames());
        code_ = place ? static_cast<std::uint32_t>(*place) : UNKNOWN_CODE;
    }
}

std::string Key::getName() const {
    std::string name;
    for (const auto& row : modifierPrefixes) {
        if ((modifiers_ & row.modifier) != 0) {
            name += row.prefix;
        }
    }
    if (code_ == NO_CODE) {
        return name;
    }
    const auto named = code_ < codeNames().size() && !codeNames()[code_].empty();
    return name + (named ? codeNames()[code_] : "Unknown");
}
