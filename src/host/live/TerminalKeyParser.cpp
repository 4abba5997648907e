#include "host/live/TerminalKeyParser.h"

#include "host/live/UsKeyboard.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Host {

namespace {

constexpr std::uint8_t escape = 0x1B;
constexpr std::string_view pasteEnd = "\x1b[201~";
constexpr std::uint32_t largestNumber = 0x110000; // larger ones are this

// "1:2;3" as fields of numbers; what is left out is 0.
class Parameters final {
public:
    explicit Parameters(std::string_view text) {
        std::size_t field = 0;
        std::size_t part = 0;
        for (const char c : text) {
            if (c == ';') {
                ++field;
                part = 0;
            } else if (c == ':') {
                ++part;
            } else if (c < '0' || c > '9') {
                isGood_ = false;
            } else if (field < numbers_.size() && part < numbers_[0].size()) {
                std::uint32_t& number = numbers_[field][part];
                number = std::min(number * 10 + static_cast<std::uint32_t>(c - '0'), largestNumber);
            }
        }
    }
    [[nodiscard]] bool isGood() const { return isGood_; }
    [[nodiscard]] std::uint32_t at(std::size_t field, std::size_t part = 0) const { return numbers_[field][part]; }

private:
    std::array<std::array<std::uint32_t, 3>, 3> numbers_{};
    bool isGood_ = true;
};

template <std::size_t size> struct CodeTable {
    std::uint32_t first; // number of the first code
    std::array<std::uint32_t, size> codes;

    [[nodiscard]] std::uint32_t find(std::uint32_t number) const {
        return number >= first && number - first < size ? codes[number - first] : Key::NO_CODE;
    }
};

constexpr std::uint32_t numpad(std::uint32_t digit) {
    return numpad0Code + digit;
}

// The numbers of the kitty protocol for keys that type nothing, from its tables; 0: no key of ours. Keys of the numpad
// are the same with and without Num Lock.
constexpr CodeTable<7> kittyLocks{57358,
                                  {capsLockCode, scrollLockCode, numLockCode, printScreenCode, pauseCode, menuCode, 0}};
constexpr CodeTable<29> kittyNumpad{57399,
                                    {numpad(0),
                                     numpad(1),
                                     numpad(2),
                                     numpad(3),
                                     numpad(4),
                                     numpad(5),
                                     numpad(6),
                                     numpad(7),
                                     numpad(8),
                                     numpad(9),
                                     numpadPointCode,
                                     numpadSlashCode,
                                     numpadTimesCode,
                                     numpadMinusCode,
                                     numpadPlusCode,
                                     numpadEnterCode,
                                     0,
                                     0,
                                     numpad(4),
                                     numpad(6),
                                     numpad(8),
                                     numpad(2),
                                     numpad(9),
                                     numpad(3),
                                     numpad(7),
                                     numpad(1),
                                     numpad(0),
                                     numpadPointCode,
                                     numpad(5)}};
constexpr CodeTable<10> kittyModifiers{57441,
                                       {leftShiftCode, leftControlCode, leftAltCode, leftWindowsCode, 0, 0,
                                        rightShiftCode, rightControlCode, rightAltCode, rightWindowsCode}};
// Of CSI number ~.
constexpr CodeTable<24> tildeKeys{1, {homeCode,   insertCode, deleteCode, endCode, pageUpCode,  pageDownCode,
                                      homeCode,   endCode,    0,          0,       f1Code,      f1Code + 1,
                                      f1Code + 2, f1Code + 3, f1Code + 4, 0,       f1Code + 5,  f1Code + 6,
                                      f1Code + 7, f1Code + 8, f1Code + 9, 0,       f1Code + 10, f1Code + 11}};

std::uint32_t codeOfLetter(char final) {
    switch (final) {
    case 'A':
        return upCode;
    case 'B':
        return downCode;
    case 'C':
        return rightCode;
    case 'D':
        return leftCode;
    case 'E':
        return numpad(5);
    case 'F':
        return endCode;
    case 'H':
        return homeCode;
    case 'P':
    case 'Q':
    case 'R':
    case 'S':
        return f1Code + static_cast<std::uint32_t>(final - 'P');
    default:
        return Key::NO_CODE;
    }
}

std::uint32_t codeOfKeypad(char final) {
    constexpr CodeTable<16> keys{'j',
                                 {numpadTimesCode, numpadPlusCode, 0, numpadMinusCode, numpadPointCode, numpadSlashCode,
                                  numpad(0), numpad(1), numpad(2), numpad(3), numpad(4), numpad(5), numpad(6),
                                  numpad(7), numpad(8), numpad(9)}};
    return final == 'M' ? std::uint32_t{numpadEnterCode} : keys.find(static_cast<std::uint32_t>(final));
}

std::uint32_t codeOfNumber(std::uint32_t number) {
    switch (number) {
    case 8:
    case 127:
        return backspaceCode;
    case 9:
        return tabCode;
    case 13:
        return enterCode;
    case 27:
        return escapeCode;
    default:
        break;
    }
    if (const auto key = keyOfCharacter(number)) {
        return key->getCode();
    }
    return kittyLocks.find(number) | kittyNumpad.find(number) | kittyModifiers.find(number);
}

// 0 and 1: none; else one more than the sum of Shift 1, Alt 2, Control 4, Super 8, Hyper 16, Meta 32 and locks.
std::uint32_t modifiersOf(std::uint32_t number) {
    const std::uint32_t bits = number > 0 ? number - 1 : 0;
    return ((bits & 1) != 0 ? Key::SHIFT : 0U) | ((bits & 4) != 0 ? Key::CONTROL : 0U) |
           ((bits & (2 | 32)) != 0 ? Key::ALT : 0U) | ((bits & 8) != 0 ? Key::WIN : 0U);
}

bool opensString(std::uint8_t byte) {
    return byte == 'P' || byte == ']' || byte == 'X' || byte == '^' || byte == '_';
}

} // namespace

void TerminalKeyParser::feed(std::span<const std::uint8_t> bytes, Time now, Inputs& inputs) {
    passTime(now, inputs);
    for (const std::uint8_t byte : bytes) {
        feed(byte, inputs);
    }
    last_ = now;
}

std::optional<TerminalKeyParser::Time> TerminalKeyParser::deadline() const {
    if (state_ == State::ground) {
        return std::nullopt;
    }
    return last_ + (state_ == State::paste || exact_ ? longWait : escapeWait);
}

void TerminalKeyParser::passTime(Time now, Inputs& inputs) {
    if (state_ == State::ground || now < *deadline()) {
        return;
    }
    // Nothing has followed: these were keys with Alt, unless no key is a character.
    if (!exact_ && state_ == State::escape) {
        emit(Key(escapeCode, alt_ ? Key::ALT : 0U), 0, 0, inputs);
    } else if (!exact_ && sequence_.empty() &&
               (state_ == State::csi || state_ == State::ss3 || state_ == State::string)) {
        alt_ = true;
        type(opening_, inputs);
    }
    state_ = State::ground;
    alt_ = false;
}

void TerminalKeyParser::feed(std::uint8_t byte, Inputs& inputs) {
    switch (state_) {
    case State::ground:
        if (byte == escape) {
            state_ = State::escape;
        } else {
            type(byte, inputs);
        }
        return;
    case State::escape:
        return startSequence(byte, inputs);
    case State::csi:
        return continueCsi(byte, inputs);
    case State::consoleKey:
        if (byte >= 'A' && byte <= 'E') {
            emit(Key(f1Code + byte - 'A'), 0, 0, inputs);
        }
        state_ = State::ground;
        alt_ = false;
        return;
    case State::ss3:
        return continueSs3(byte, inputs);
    case State::string:
    case State::stringEscape:
        return continueString(byte);
    case State::paste:
        return continuePaste(byte);
    }
}

// A byte that is a key by itself.
void TerminalKeyParser::type(std::uint8_t byte, Inputs& inputs) {
    std::optional<Key> key;
    if (byte >= 0x20 && byte < 0x7F) {
        key = keyOfCharacter(byte);
    } else if (byte == 0x08 || byte == 0x7F) {
        key = Key(backspaceCode);
    } else if (byte == '\t') {
        key = Key(tabCode);
    } else if (byte == '\r' || byte == '\n') {
        key = Key(enterCode);
    } else if (byte == 0) {
        key = Key(spaceCode, Key::CONTROL);
    } else if (byte < 0x1B) {
        key = Key(byte + std::uint32_t{'A'} - 1, Key::CONTROL);
    } else if (byte < 0x20) {
        constexpr std::string_view typed = "[\\]6/"; // with Control, from 0x1B on
        key = keyOfCharacter(static_cast<std::uint32_t>(typed[byte - escape]));
        key = Key(key->getCode(), Key::CONTROL);
    }
    if (key) {
        inputs.emplace_back(KeyTyped{Key(key->getCode(), key->getModifiers() | (alt_ ? Key::ALT : 0U))});
    }
    alt_ = false;
}

void TerminalKeyParser::startSequence(std::uint8_t byte, Inputs& inputs) {
    sequence_.clear();
    opening_ = byte;
    if (byte == escape) {
        alt_ = true; // ESC ESC: Alt with Escape or with the sequence that follows
    } else if (byte == '[') {
        state_ = State::csi;
    } else if (byte == 'O') {
        state_ = State::ss3;
    } else if (opensString(byte)) {
        state_ = State::string;
    } else {
        state_ = State::ground;
        alt_ = true;
        type(byte, inputs);
    }
}

void TerminalKeyParser::continueCsi(std::uint8_t byte, Inputs& inputs) {
    if (byte < 0x20 || byte > 0x7E) { // broken off: the byte starts anew
        state_ = State::ground;
        alt_ = false;
        feed(byte, inputs);
    } else if (byte == '[' && sequence_.empty()) {
        state_ = State::consoleKey;
    } else if (byte < 0x40) {
        if (sequence_.size() <= longestSequence) {
            sequence_.push_back(static_cast<char>(byte));
        }
    } else {
        state_ = State::ground;
        if (sequence_.size() <= longestSequence) {
            endCsi(static_cast<char>(byte), inputs);
        }
        alt_ = false;
    }
}

void TerminalKeyParser::endCsi(char final, Inputs& inputs) {
    if (sequence_.starts_with('?')) {
        const Parameters answer(std::string_view(sequence_).substr(1));
        if (final == 'u' && answer.isGood()) {
            inputs.emplace_back(KeyboardFlags{answer.at(0)});
        }
        return;
    }
    const Parameters parameters(sequence_);
    if (!parameters.isGood()) {
        return;
    }
    const std::uint32_t modifiers = parameters.at(1);
    const std::uint32_t event = parameters.at(1, 1);
    if (final == 'u') {
        const std::uint32_t byPlace = codeOfNumber(parameters.at(0, 2));
        emit(Key(byPlace != Key::NO_CODE ? byPlace : codeOfNumber(parameters.at(0))), modifiers, event, inputs);
    } else if (final == '~' && parameters.at(0) == 200) {
        sequence_.clear();
        state_ = State::paste;
    } else if (final == '~' && parameters.at(0) == 27) { // xterm's modified characters
        emit(Key(codeOfNumber(parameters.at(2))), modifiers, 0, inputs);
    } else if (final == '~') {
        const std::uint32_t number = parameters.at(0);
        emit(Key(number == 57427 ? numpad(5) : tildeKeys.find(number)), modifiers, event, inputs);
    } else if (final == 'Z') {
        emit(Key(tabCode, Key::SHIFT), modifiers, event, inputs);
    } else if (final == 'O' && sequence_.empty()) {
        inputs.emplace_back(FocusLost{});
    } else if (parameters.at(0) <= 1) { // other numbers stand in reports of positions
        emit(Key(codeOfLetter(final)), modifiers, event, inputs);
    }
}

void TerminalKeyParser::continueSs3(std::uint8_t byte, Inputs& inputs) {
    if (byte >= '0' && byte <= '9' && sequence_.size() < 3) {
        sequence_.push_back(static_cast<char>(byte)); // modifiers, as some terminals have them
        return;
    }
    state_ = State::ground;
    if (byte < 0x20 || byte > 0x7E) {
        alt_ = false;
        feed(byte, inputs);
        return;
    }
    const char final = static_cast<char>(byte);
    const std::uint32_t code = codeOfLetter(final);
    emit(Key(code != Key::NO_CODE ? code : codeOfKeypad(final)), Parameters(sequence_).at(0), 0, inputs);
    alt_ = false;
}

void TerminalKeyParser::continueString(std::uint8_t byte) {
    constexpr std::uint8_t bell = 0x07;
    constexpr std::uint8_t cancel = 0x18;
    constexpr std::uint8_t substitute = 0x1A;
    const bool over = byte == bell || byte == cancel || byte == substitute;
    if (over || (state_ == State::stringEscape && byte == '\\')) {
        state_ = State::ground;
        alt_ = false;
        return;
    }
    state_ = byte == escape ? State::stringEscape : State::string;
    sequence_.assign(1, 'x'); // something has followed
}

void TerminalKeyParser::continuePaste(std::uint8_t byte) {
    const char c = static_cast<char>(byte);
    if (c != pasteEnd[sequence_.size()]) {
        sequence_.clear();
    }
    if (c == pasteEnd[sequence_.size()]) {
        sequence_.push_back(c);
    }
    if (sequence_.size() == pasteEnd.size()) {
        state_ = State::ground;
    }
}

// The terminal's numbers for modifiers and event; the key's own modifiers are added. Nothing for no key.
void TerminalKeyParser::emit(Key key, std::uint32_t modifierNumber, std::uint32_t eventNumber, Inputs& inputs) const {
    constexpr std::uint32_t repeats = 2;
    constexpr std::uint32_t comesUp = 3;
    if (key.getCode() == Key::NO_CODE) {
        return;
    }
    key = withoutOwnModifier(
        Key(key.getCode(), key.getModifiers() | modifiersOf(modifierNumber) | (alt_ ? Key::ALT : 0U)));
    if (exact_) {
        inputs.emplace_back(KeyEvent{key, eventNumber == comesUp   ? Press::up
                                          : eventNumber == repeats ? Press::repeat
                                                                   : Press::down});
    } else if (eventNumber != comesUp) {
        inputs.emplace_back(KeyTyped{key});
    }
}

} // namespace Host
