#include "host/ScriptLine.h"

#include "platform/XmlDocument.h"
#include "values/JoyAxisElementId.h"
#include "values/Key.h"
#include "values/MessageType.h"

#include <charconv>
#include <limits>
#include <optional>

namespace Host {

namespace {

using Backend::MidiEngine::dataByteCount;
using Backend::MidiEngine::eventName;
using Backend::MidiEngine::fixStatus;
using Backend::MidiEngine::isKnown;
using Backend::MidiEngine::MessageType;

constexpr std::string_view blanks = " \t";

std::string inQuotes(std::string_view text) {
    constexpr std::size_t longest = 60;
    if (text.size() <= longest) {
        return '"' + std::string(text) + '"';
    }
    std::size_t end = longest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        --end; // never through the middle of a character
    }
    return '"' + std::string(text.substr(0, end)) + "...\"";
}

// All of `word`, in decimal or, with `hexToo`, after "0x" in hex.
std::optional<std::int64_t> numberOf(std::string_view word, bool hexToo) {
    int base = 10;
    if (hexToo && (word.starts_with("0x") || word.starts_with("0X"))) {
        word.remove_prefix(2);
        base = 16;
        if (word.starts_with('-')) {
            return std::nullopt;
        }
    }
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number, base);
    if (error == std::errc::invalid_argument || end != word.data() + word.size()) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        return word.starts_with('-') ? std::numeric_limits<std::int64_t>::min()
                                     : std::numeric_limits<std::int64_t>::max();
    }
    return number;
}

} // namespace

struct ScriptLine::NamedVerb {
    std::string_view name;
    Verb read;
};

const ScriptLine::NamedVerb ScriptLine::verbs[] = {
    {"midi", &ScriptLine::readMidi},
    {"key", &ScriptLine::readKey},
    {"control", &ScriptLine::readControl},
    {"axis", &ScriptLine::readAxis},
    {"button", &ScriptLine::readButton},
    {"function", &ScriptLine::readFunction},
    {"translate", &ScriptLine::readTranslation},
    {"tempo", &ScriptLine::readTempo},
    {"reset", &ScriptLine::readReset},
    {"end", &ScriptLine::readEnd},
};

bool ScriptLine::read(PerformanceEvent& event) {
    std::int64_t tick = 0;
    if (!readNumber(word(), "a tick", 0, latestTick, false, tick)) {
        return false;
    }
    event.tick = static_cast<std::int32_t>(tick);
    const std::string_view name = word();
    if (name.empty()) {
        return fail("a tick without a verb");
    }
    for (const NamedVerb& verb : verbs) {
        if (verb.name == name) {
            return (this->*verb.read)(event.what);
        }
    }
    return fail("unknown verb " + inQuotes(name));
}

bool ScriptLine::readMidi(Content& content) {
    MidiArrives midi;
    if (!readPort(midi) || !readStatus(midi)) {
        return false;
    }
    const std::string_view d1 = word();
    const std::string_view d2 = word();
    if (!expectEnd() || (!d1.empty() && !readDataByte(d1, midi.d1)) || (!d2.empty() && !readDataByte(d2, midi.d2))) {
        return false;
    }
    // A byte that the message does not have may stand there as 0, as in a short message.
    const auto type = fixStatus(static_cast<MessageType>(midi.status));
    const int size = dataByteCount(type);
    if ((size < 2 && midi.d2 != 0) || (size < 1 && midi.d1 != 0)) {
        return fail(eventName(type) + " has " + (size == 0 ? "no data bytes" : "one data byte"));
    }
    content = midi;
    return true;
}

bool ScriptLine::readKey(Content& content) {
    KeyMoves key;
    if (!readPress(key.press)) {
        return false;
    }
    key.name = remaining();
    if (key.name.empty()) {
        return fail("a key without a name");
    }
    const Key named{std::string_view(key.name)};
    if (named.getCode() == Key::UNKNOWN_CODE || named.getName() != key.name) {
        return fail("unknown key " + inQuotes(key.name));
    }
    content = std::move(key);
    return true;
}

bool ScriptLine::readControl(Content& content) {
    const std::string_view cell = word();
    const std::size_t comma = cell.find(',');
    if (comma == std::string_view::npos) {
        return fail(cell.empty() ? "a control without a cell" : "a cell is X,Y, not " + inQuotes(cell));
    }
    constexpr std::int64_t greatest = std::numeric_limits<std::int32_t>::max();
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t value = 0;
    if (!readNumber(cell.substr(0, comma), "a coordinate", 0, greatest, false, x) ||
        !readNumber(cell.substr(comma + 1), "a coordinate", 0, greatest, false, y) ||
        !readNumber(word(), "a value", std::numeric_limits<std::int32_t>::min(), greatest, false, value)) {
        return false;
    }
    content =
        ControlMoves{{static_cast<std::int32_t>(x), static_cast<std::int32_t>(y)}, static_cast<std::int32_t>(value)};
    return expectEnd();
}

bool ScriptLine::readAxis(Content& content) {
    std::int64_t joystick = 0;
    if (!readNumber(word(), "a joystick", 0, 1, false, joystick)) {
        return false;
    }
    const std::string_view letter = word();
    const std::int32_t axis = JoyAxisElementId::axisFromLetter(letter);
    if (axis < 0) {
        return fail(letter.empty() ? "an axis is missing" : "unknown axis " + inQuotes(letter));
    }
    std::int64_t raw = 0;
    if (!readNumber(word(), "a position", 0, 65535, false, raw)) {
        return false;
    }
    content = AxisMoves{static_cast<std::uint8_t>(joystick), static_cast<std::uint8_t>(axis),
                        static_cast<std::uint16_t>(raw)};
    return expectEnd();
}

bool ScriptLine::readButton(Content& content) {
    std::int64_t joystick = 0;
    std::int64_t number = 0;
    ButtonMoves button;
    if (!readNumber(word(), "a joystick", 0, 1, false, joystick) ||
        !readNumber(word(), "a button", 0, 31, false, number) || !readPress(button.press)) {
        return false;
    }
    button.joystick = static_cast<std::uint8_t>(joystick);
    button.button = static_cast<std::uint8_t>(number);
    content = button;
    return expectEnd();
}

bool ScriptLine::readFunction(Content& content) {
    ExecuteFunction function;
    if (!readXml(function.xml)) {
        return false;
    }
    content = std::move(function);
    return true;
}

bool ScriptLine::readTranslation(Content& content) {
    ExecuteTranslation translation;
    if (!readPort(translation.incoming) || !readStatus(translation.incoming) ||
        !readDataByte(word(), translation.incoming.d1) || !readDataByte(word(), translation.incoming.d2) ||
        !readXml(translation.xml)) {
        return false;
    }
    content = std::move(translation);
    return true;
}

bool ScriptLine::readTempo(Content& content) {
    std::int64_t tempo = 0;
    if (!readNumber(word(), "a tempo", 10, 500, false, tempo)) {
        return false;
    }
    content = SetTempo{static_cast<int>(tempo)};
    return expectEnd();
}

bool ScriptLine::readReset(Content& content) {
    content = ResetAll{};
    return expectEnd();
}

bool ScriptLine::readEnd(Content& content) {
    content = EndOfPerformance{};
    return expectEnd();
}

bool ScriptLine::readPort(MidiArrives& midi) {
    std::int64_t port = 0;
    if (!readNumber(word(), "a port", 0, 127, true, port)) {
        return false;
    }
    if (port >= inputs_) {
        return fail("there is no input port " + std::to_string(port) + "; inputs: " + std::to_string(inputs_));
    }
    midi.port = static_cast<std::uint8_t>(port);
    return true;
}

bool ScriptLine::readStatus(MidiArrives& midi) {
    std::int64_t status = 0;
    const std::string_view text = word();
    if (!readNumber(text, "a status", 0x80, 0xFF, true, status)) {
        return false;
    }
    if (!isKnown(fixStatus(static_cast<MessageType>(status)))) {
        return fail(inQuotes(text) + " is the status of no message");
    }
    midi.status = static_cast<std::uint8_t>(status);
    return true;
}

bool ScriptLine::readDataByte(std::string_view text, std::uint8_t& data) {
    std::int64_t number = 0;
    if (!readNumber(text, "a data byte", 0, 127, true, number)) {
        return false;
    }
    data = static_cast<std::uint8_t>(number);
    return true;
}

bool ScriptLine::readPress(Press& press) {
    const std::string_view text = word();
    if (text == "down") {
        press = Press::down;
    } else if (text == "repeat") {
        press = Press::repeat;
    } else if (text == "up") {
        press = Press::up;
    } else {
        return fail("down, repeat or up must stand here" + (text.empty() ? "" : ", not " + inQuotes(text)));
    }
    return true;
}

bool ScriptLine::readXml(std::string& xml) {
    xml = remaining();
    if (xml.empty()) {
        return fail("an XML element is missing");
    }
    if (const auto parsed = Platform::parseXml(xml, {}); !parsed) {
        return fail("not an XML element: " + parsed.fault().reason);
    }
    return true;
}

bool ScriptLine::readNumber(std::string_view text, const char* what, std::int64_t least, std::int64_t greatest,
                            bool hexToo, std::int64_t& number) {
    if (text.empty()) {
        return fail(std::string(what) + " is missing");
    }
    const std::optional<std::int64_t> read = numberOf(text, hexToo);
    if (!read) {
        return fail(inQuotes(text) + " is not " + what);
    }
    if (*read < least || *read > greatest) {
        return fail(std::string(what) + " lies within " + std::to_string(least) + " and " + std::to_string(greatest) +
                    ", not at " + std::string(text.substr(0, 24)));
    }
    number = *read;
    return true;
}

std::string_view ScriptLine::word() {
    const std::size_t begin = std::min(rest_.find_first_not_of(blanks), rest_.size());
    const std::size_t end = std::min(rest_.find_first_of(blanks, begin), rest_.size());
    const std::string_view found = rest_.substr(begin, end - begin);
    rest_.remove_prefix(end);
    return found;
}

// What is left of the line, without the blanks around it.
std::string_view ScriptLine::remaining() const {
    const std::size_t begin = rest_.find_first_not_of(blanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return rest_.substr(begin, rest_.find_last_not_of(blanks) + 1 - begin);
}

bool ScriptLine::expectEnd() {
    const std::string_view more = remaining();
    return more.empty() || fail(inQuotes(more) + " is too much");
}

bool ScriptLine::fail(std::string reason) {
    reason_ = std::move(reason);
    return false;
}

} // namespace Host
