#include "host/live/TerminalKeys.h"

#include "host/live/ConsoleKey.h"
#include "host/live/StatusText.h"
#include "support/RandomCases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace Host {
namespace {

using namespace std::chrono_literals;
using Time = TerminalKeys::Time;

std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string textOf(const KeyEvent& event) {
    const char* const presses[]{"down ", "repeat ", "up "};
    return presses[static_cast<int>(event.press)] + event.key.getName();
}
std::string textOf(const KeyTyped& typed) {
    return typed.key.getName();
}
std::string textOf(const FocusLost&) {
    return "focus lost";
}
std::string textOf(const KeyboardFlags& answer) {
    return "flags " + std::to_string(answer.flags);
}

// What the bytes give when they come at once and nothing follows; parted by "; ".
std::string parsed(std::string_view bytes, bool exact = false, std::size_t piece = 1000) {
    TerminalKeyParser parser;
    parser.setExact(exact);
    TerminalKeyParser::Inputs inputs;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size()))) {
        parser.feed(bytesOf(bytes.substr(0, piece)), 0ms, inputs);
    }
    parser.passTime(5s, inputs);
    EXPECT_FALSE(parser.deadline());
    std::string text;
    for (const TerminalInput& input : inputs) {
        text += (text.empty() ? "" : "; ") + std::visit([](const auto& each) { return textOf(each); }, input);
    }
    return text;
}

struct Row {
    std::string bytes;
    std::string keys;
};

TEST(TerminalKeyParser, OrdinaryTerminals) {
    const Row rows[]{
        {"q2Q@", "Q; 2; Shift Q; Shift 2"},
        {"-=[]\\;',./`", "Minus; Equals; Left Bracket; Right Bracket; Backslash; Semicolon; Apostrophe; Comma; Period; "
                         "Slash; Quote"},
        {"~:\"?_+{}|<>",
         "Shift Quote; Shift Semicolon; Shift Apostrophe; Shift Slash; Shift Minus; Shift Equals; Shift "
         "Left Bracket; Shift Right Bracket; Shift Backslash; Shift Comma; Shift Period"},
        {" \r\t\x7f\x08", "Space; Enter; Tab; Backspace; Backspace"},
        {std::string("\x00\x01\x1a\x1c\x1d\x1e\x1f", 7),
         "Control Space; Control A; Control Z; Control Backslash; Control Right Bracket; Control 6; Control Slash"},
        {"\x1b", "Escape"},
        {"\x1bq\x1bQ\x1b\x01", "Alt Q; Shift Alt Q; Control Alt A"},
        {"\x1b[", "Alt Left Bracket"},
        {"\x1bO", "Shift Alt O"},
        {"\x1b]", "Alt Right Bracket"},
        {"\x1b\x1b", "Alt Escape"},
        {"\x1b\x1b[A", "Alt Up"},
        {"\x1b[A\x1b[B\x1b[C\x1b[D\x1b[H\x1b[F\x1bOA\x1bOH", "Up; Down; Right; Left; Home; End; Up; Home"},
        {"\x1b[1;5A\x1b[1;2D\x1b[1;8C", "Control Up; Shift Left; Shift Control Alt Right"},
        {"\x1b[2~\x1b[3~\x1b[5~\x1b[6~\x1b[1~\x1b[4~\x1b[7~\x1b[8~",
         "Insert; Delete; Page Up; Page Down; Home; End; Home; End"},
        {"\x1b[3;5~\x1b[5;3~", "Control Delete; Alt Page Up"},
        {"\x1bOP\x1bOS\x1b[11~\x1b[15~\x1b[17~\x1b[21~\x1b[23~\x1b[24~", "F1; F4; F1; F5; F6; F10; F11; F12"},
        {"\x1b[1;2P\x1b[1;2R\x1b[15;2~\x1bO5P", "Shift F1; Shift F3; Shift F5; Control F1"},
        {"\x1b[[A\x1b[[E", "F1; F5"},
        {"\x1b[Z", "Shift Tab"},
        {"\x1bOp\x1bOy\x1bOj\x1bOk\x1bOm\x1bOn\x1bOo\x1bOM\x1b[E",
         "Numpad 0; Numpad 9; Numpad *; Numpad +; Numpad -; Numpad .; Numpad /; Numpad Enter; Numpad 5"},
        {"\x1b[27;5;113~", "Control Q"},
        {"\x1b[I\x1b[O", "focus lost"},
        {"\x1b[?0u\x1b[?15u\x1b[?62;4c", "flags 0; flags 15"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.bytes));
        EXPECT_EQ(parsed(row.bytes), row.keys);
        EXPECT_EQ(parsed(row.bytes, false, 1), row.keys) << "byte by byte";
    }
}

TEST(TerminalKeyParser, DropsWhatIsNoKey) {
    const Row rows[]{
        {"\xc3\xbcq\xe2\x82\xacw\xf0\x9f\x8e\xb9", "Q; W"},
        {"\x1b[200~qwe\x1b[A\x1b]\x1b[201\x1b[201~r", "R"},
        {"\x1b[200~never ends", ""},
        {"\x1b]0;title\aq\x1bPdata\x1b\\w\x1b_x\x1b\x1b\\e", "Q; W; E"},
        {"\x1b]never ends", ""},
        {"\x1b[12;40Rq\x1b[<0;1;2Mw\x1b[99999999999999999999~e\x1b[4294967297ur", "Q; W; E; R"},
        {"\x1b[1;5", ""},
        {"\x1b[1;\x1b[Aq", "Up; Q"},
        {"\x1b[1;\x03", "Control C"},
        {"\x1b[" + std::string(1000, '1') + "Aq", "Q"},
        {"\x1b[1;1;1;1;1;1:1:1:1:1:1Aq", "Up; Q"},
        {"\x1b[5$q", ""},
        {"\x1b[?1;uq", "flags 1; Q"},
        {"\x1bOzq\x1bO\x1b[A", "Q; Up"},
        {"\x1b[0~\x1b[9~\x1b[16~\x1b[25~\x1b[100~", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parsed(row.bytes), row.keys) << testing::PrintToString(row.bytes);
    }
}

TEST(TerminalKeyParser, TerminalsThatTellReleases) {
    const Row rows[]{
        {"\x1b[113u\x1b[113;1:2u\x1b[113;1:3u", "down Q; repeat Q; up Q"},
        {"\x1b[233::50;1:1u\x1b[121::122u", "down 2; down Z"}, // by place, not by what is typed
        {"\x1b[97:65;2u\x1b[97;6:3u", "down Shift A; up Shift Control A"},
        {"\x1b[113;129u\x1b[113;65:3u", "down Q; up Q"}, // with Num Lock; with Caps Lock
        {"\x1b[1;1:1A\x1b[1;1:3A\x1b[5;1:2~\x1b[3;5:3~", "down Up; up Up; repeat Page Up; up Control Delete"},
        {"\x1b[P\x1b[13~\x1b[1;2:3S\x1b[24;1:3~", "down F1; down F3; up Shift F4; up F12"},
        {"\x1b[27u\x1b[13u\x1b[9u\x1b[127u\x1b[32u", "down Escape; down Enter; down Tab; down Backspace; down Space"},
        {"\x1b[57441;2u\x1b[57441;2:3u\x1b[57448;5u\x1b[57449;3u\x1b[57444;9u",
         "down Left Shift; up Left Shift; down Right Control; down Right Alt; down Left Windows"},
        {"\x1b[57399u\x1b[57408u\x1b[57414u\x1b[57413u\x1b[57417u\x1b[57426u\x1b[57427~",
         "down Numpad 0; down Numpad 9; down Numpad Enter; down Numpad +; down Numpad 4; down Numpad .; down Numpad 5"},
        {"\x1b[233u\x1b[57428u\x1b[1114112u\x1b[u", ""},
        {"\x1b[113;1:9u", "down Q"},
        {"\x1b", ""}, // the beginning of a sequence that came in pieces
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parsed(row.bytes, true), row.keys) << testing::PrintToString(row.bytes);
    }
}

// What comes of keys over time; each line begins with the milliseconds.
class TerminalKeysTest : public testing::Test {
protected:
    void at(Time time, std::string_view bytes) {
        until(time);
        note(time, keys.take(bytesOf(bytes), time));
    }
    void until(Time time) {
        while (keys.deadline() && *keys.deadline() <= time) {
            const Time next = *keys.deadline();
            note(next, keys.passTime(next));
        }
    }
    std::string take() { return std::exchange(log, {}); }
    void answer(std::string_view flags) { at(0ms, "\x1b[?" + std::string(flags) + "u"); }

    TerminalKeys keys;
    std::string log;

private:
    void note(Time time, const TerminalKeys::Result& result) {
        const auto add = [&](const std::string& what) {
            log += (log.empty() ? "" : "; ") + std::to_string(time.count()) + " " + what;
        };
        for (const KeyEvent& event : result.keys) {
            add(textOf(event));
        }
        for (const auto& [is, what] :
             {std::pair{result.request, "request"}, {result.end, "end"}, {result.suspend, "suspend"}}) {
            if (is) {
                add(what);
            }
        }
    }
};

TEST_F(TerminalKeysTest, AKeyIsDownUntilShortlyAfterItsLastRepeat) {
    at(0ms, "q");
    until(5s);
    EXPECT_EQ(take(), "0 down Q; 700 up Q");
    for (const Time time : {10000ms, 10600ms, 10700ms, 10800ms}) {
        at(time, "q");
    }
    until(20s);
    EXPECT_EQ(take(), "10000 down Q; 10600 repeat Q; 10700 repeat Q; 10800 repeat Q; 10930 up Q");
}

TEST_F(TerminalKeysTest, ANewKeyEndsNoOther) {
    at(0ms, "q");
    at(300ms, "w");
    for (Time time = 800ms; time <= 1000ms; time += 40ms) {
        at(time, "w");
    }
    until(5s);
    EXPECT_EQ(take(), "0 down Q; 300 down W; 700 up Q; 800 repeat W; 840 repeat W; 880 repeat W; 920 repeat W; 960 "
                      "repeat W; 1000 repeat W; 1130 up W");
}

TEST_F(TerminalKeysTest, AChordStaysDownWithItsLastKey) {
    at(0ms, "q");
    at(30ms, "e");
    at(60ms, "t");
    for (Time time = 560ms; time <= 1000ms; time += 40ms) {
        at(time, "t");
    }
    take();
    until(5s);
    EXPECT_EQ(take(), "1130 up Q; 1130 up E; 1130 up T");
}

TEST_F(TerminalKeysTest, OtherModifiersAreANewPressOfTheKey) {
    at(0ms, "q");
    at(100ms, "Q");
    until(5s);
    EXPECT_EQ(take(), "0 down Q; 100 up Q; 100 down Shift Q; 800 up Shift Q");
}

TEST_F(TerminalKeysTest, FunctionKeysAreTapped) {
    at(0ms, "\x1bOQ");
    at(150ms, "\x1bOQ");
    until(5s);
    EXPECT_EQ(take(), "0 down F2; 130 up F2; 150 down F2; 280 up F2");
}

TEST_F(TerminalKeysTest, TheKeyboardsDelayIsLearned) {
    at(0ms, "q");
    for (Time time = 400ms; time <= 520ms; time += 30ms) {
        at(time, "q");
    }
    until(1s);
    take();
    at(2000ms, "q"); // three presses, the last held
    at(2300ms, "q");
    at(2600ms, "q");
    at(3010ms, "q");
    until(5s);
    EXPECT_EQ(take(), "2000 down Q; 2300 up Q; 2300 down Q; 2600 up Q; 2600 down Q; 3010 repeat Q; 3140 up Q");
}

TEST_F(TerminalKeysTest, ExactWhereTheTerminalOffersIt) {
    answer("0");
    EXPECT_EQ(take(), "0 request");
    answer("15");
    EXPECT_EQ(take(), "");
    at(1ms, "\x1b[113u\x1b[119u");
    at(9s, "\x1b[113;1:3u");
    until(60s);
    EXPECT_EQ(take(), "1 down Q; 1 down W; 9000 up Q");
    at(70s, "\x1b[O\x1b[119;1:3u"); // the release comes after the loss of the focus
    EXPECT_EQ(take(), "70000 up W");
    at(71s, "\x1b[13;1:3u"); // was down before the program began
    EXPECT_EQ(take(), "");
    at(72s, "\x1b[99;5u\x1b[122;5u");
    EXPECT_EQ(take(), "72000 end; 72000 suspend");
}

TEST_F(TerminalKeysTest, GuessesWhereTheTerminalGivesLess) {
    answer("0");
    answer("5"); // no event types
    take();
    at(0ms, "\x1b[113u\x03");
    until(5s);
    EXPECT_EQ(take(), "0 down Q; 0 end; 700 up Q");
}

TEST_F(TerminalKeysTest, WhateverComesEndsInSilence) {
    RandomCases cases;
    auto& random = cases.generator();
    const std::string_view likely = "\x1b\x1b\x1b[[O?;:~u0123456789ABqQw\xc3";
    Time now{};
    std::set<std::uint32_t> down;
    const auto follow = [&](const TerminalKeys::Result& result) {
        for (const KeyEvent& event : result.keys) {
            const bool was = down.contains(event.key.getCode());
            ASSERT_EQ(was, event.press != Press::down);
            event.press == Press::up ? static_cast<void>(down.erase(event.key.getCode()))
                                     : static_cast<void>(down.insert(event.key.getCode()));
        }
    };
    for (int round = 0; round < 20000; ++round) {
        std::string bytes;
        for (auto size = random() % 12; size > 0; --size) {
            bytes += random() % 4 == 0 ? static_cast<char>(random()) : likely[random() % likely.size()];
        }
        now += Time{random() % 5 == 0 ? random() % 900 : random() % 20};
        follow(random() % 3 == 0 ? keys.passTime(now) : keys.take(bytesOf(bytes), now));
    }
    follow(keys.liftAll());
    EXPECT_TRUE(down.empty());
}

TEST(ConsoleKey, PlacesAndMeanings) {
    struct ConsoleRow {
        ConsoleKey key;
        const char* name;
    };
    const ConsoleRow rows[]{
        {{'A', 0x10, false, 0}, "Q"}, // French layout
        {{'Q', 0x10, false, Key::SHIFT}, "Shift Q"},
        {{0xBA, 0x1A, false, 0}, "Left Bracket"}, // German
        {{'0', 0x0B, false, 0}, "0"},
        {{0xC0, 0x29, false, 0}, "Quote"},
        {{0xBF, 0x35, false, 0}, "Slash"},
        {{0x6F, 0x35, true, 0}, "Numpad /"},
        {{0x62, 0x50, false, 0}, "Numpad 2"},
        {{0x28, 0x50, false, 0}, "Numpad 2"}, // without Num Lock
        {{0x28, 0x50, true, Key::CONTROL}, "Control Down"},
        {{0x6A, 0x37, false, 0}, "Numpad *"},
        {{0x2C, 0x37, true, 0}, "Print Screen"},
        {{0x0D, 0x1C, false, 0}, "Enter"},
        {{0x0D, 0x1C, true, 0}, "Numpad Enter"},
        {{0x10, 0x36, false, Key::SHIFT}, "Right Shift"},
        {{0x10, 0x2A, false, Key::SHIFT}, "Left Shift"},
        {{0x11, 0x1D, true, Key::CONTROL}, "Right Control"},
        {{0x12, 0x38, false, Key::ALT | Key::SHIFT}, "Shift Left Alt"},
        {{0x13, 0x45, false, 0}, "Pause"},
        {{0x90, 0x45, true, 0}, "Num Lock"},
        {{0x70, 0x3B, false, 0}, "F1"},
        {{'Q', 0, false, 0}, "Q"}, // made by a program
        {{0xFF, 0x7F, false, Key::SHIFT}, ""},
    };
    for (const ConsoleRow& row : rows) {
        EXPECT_EQ(keyOf(row.key).getName(), row.name);
    }
}

TEST(StatusText, SaysHowThingsAre) {
    StatusContent content;
    EXPECT_EQ(statusText(content),
              "untitled program | no zone | no control | 120 BPM | 0 notes held | in: none | out: none");
    content = {
        {"Split", 3, {{2, 12, 1}}, {{{0, 1}, "Pan", 64, 2}}, 90}, Tempo::of(133.66), false, 1, {"a"}, {"b", "c"}};
    EXPECT_EQ(statusText(content),
              "Split | zone 2 +12 | Pan = 64 (2 selected) | 133.7 BPM (no clock) | 1 note held | in: a | out: b, c");
    EXPECT_EQ(fitted("a\xc3\xbc\x1b\xe2\x82\xac!", 4), "a\xc3\xbc?\xe2\x82\xac");
    EXPECT_EQ(fitted("ab", -1), "");
}

} // namespace
} // namespace Host
