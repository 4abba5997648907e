// Names of notes and keys, read and written.
#include "values/Key.h"
#include "values/Note.h"

#include <gtest/gtest.h>
#include <set>
#include <unordered_set>
#include <vector>

namespace {

TEST(NoteTest, EveryNoteHasANameOfItsOwnAndIsReadBack) {
    std::set<std::string> names;
    for (auto number = 0; number <= 127; ++number) {
        const Note note(number);
        names.insert(note.getName());
        EXPECT_EQ(Note::fromName(note.getName()), note) << note.getName();
        EXPECT_EQ(Note::fromPitchName(note.getPitchName()), Note(number % 12)) << note.getName();
        EXPECT_EQ(Note::fromPitchName(note.getName()), Note(number % 12)) << note.getName();
    }
    EXPECT_EQ(names.size(), 128U);
    EXPECT_EQ(Note(0).getName(), "C-1");
    EXPECT_EQ(Note(60).getName(), "C4");
    EXPECT_EQ(Note(61).getName(), "C#4");
    EXPECT_EQ(Note(127).getName(), "G9");
    EXPECT_EQ(Note(-7).getName(), "");
}

TEST(NoteTest, OtherTextIsNoNote) {
    for (const auto* const text : {"", "C", "c4", "Db4", "E#4", "H4", "C-2", "G#9", "C10", "C4 ", " C4", "C+4", "C04",
                                   "C99999999999", "60", "#4"}) {
        EXPECT_FALSE(Note::fromName(text).isSet()) << text;
    }
    for (const auto* const text : {"", "c", "H", "#", "C##", "C major"}) {
        EXPECT_FALSE(Note::fromPitchName(text).isSet()) << text;
    }
}

TEST(KeyTest, CodesAndNames) {
    struct Row {
        std::uint32_t code;
        const char* name;
    };
    for (const auto& row : std::vector<Row>{{5, "Print Screen"},
                                            {8, "Backspace"},
                                            {9, "Tab"},
                                            {13, "Enter"},
                                            {16, "Left Shift"},
                                            {17, "Left Control"},
                                            {19, "Pause"},
                                            {20, "Caps Lock"},
                                            {27, "Escape"},
                                            {32, "Space"},
                                            {33, "Page Up"},
                                            {34, "Page Down"},
                                            {35, "End"},
                                            {36, "Home"},
                                            {37, "Left"},
                                            {38, "Up"},
                                            {39, "Right"},
                                            {40, "Down"},
                                            {45, "Insert"},
                                            {46, "Delete"},
                                            {48, "0"},
                                            {57, "9"},
                                            {65, "A"},
                                            {90, "Z"},
                                            {91, "Left Windows"},
                                            {92, "Right Windows"},
                                            {93, "Windows Key"},
                                            {96, "Numpad 0"},
                                            {105, "Numpad 9"},
                                            {106, "Numpad *"},
                                            {107, "Numpad +"},
                                            {109, "Numpad -"},
                                            {110, "Numpad ."},
                                            {111, "Numpad /"},
                                            {112, "F1"},
                                            {123, "F12"},
                                            {144, "Num Lock"},
                                            {145, "Scroll Lock"},
                                            {161, "Right Shift"},
                                            {164, "Left Alt"},
                                            {165, "Right Alt"},
                                            {186, "Semicolon"},
                                            {187, "Equals"},
                                            {188, "Comma"},
                                            {189, "Minus"},
                                            {190, "Period"},
                                            {191, "Slash"},
                                            {192, "Quote"},
                                            {219, "Left Bracket"},
                                            {220, "Backslash"},
                                            {221, "Right Bracket"},
                                            {222, "Apostrophe"},
                                            {225, "Right Control"},
                                            {226, "Numpad Enter"},
                                            {0, ""}}) {
        EXPECT_EQ(Key(row.code).getName(), row.name);
        EXPECT_EQ(Key(std::string_view(row.name)), Key(row.code)) << row.name;
    }
}

TEST(KeyTest, EveryNamedKeyWithEveryModifierIsReadBackFromNameAndPackedForm) {
    std::unordered_set<Key> keys;
    auto named = 0U;
    for (auto code = 0U; code <= 255; ++code) {
        const auto hasName = Key(code).getName() != "Unknown";
        named += hasName ? 1U : 0U;
        for (auto modifiers = 0U; modifiers < 16; ++modifiers) {
            const Key key(code, modifiers);
            EXPECT_EQ(Key::fromPacked(key.getPacked()), key);
            EXPECT_EQ(key.getPacked(), code | modifiers << 8);
            EXPECT_EQ(Key(std::string_view(key.getName())), hasName ? key : Key(Key::UNKNOWN_CODE, modifiers))
                << key.getName();
            keys.insert(key);
        }
    }
    EXPECT_EQ(keys.size(), 256U * 16U);
    EXPECT_EQ(named, 104U + 1U); // and no key, whose name is empty
    EXPECT_EQ(Key(65, Key::SHIFT | Key::CONTROL | Key::ALT | Key::WIN).getName(), "Shift Control Alt Win A");
}

TEST(KeyTest, UnknownNamesMatchNoKeyThatIsPressed) {
    for (const auto* const name : {"Unknown", "f1", "Control Shift A", "Shift", "Shift  A", "A ", "F13", "Foo"}) {
        const Key key{std::string_view(name)};
        EXPECT_EQ(key.getCode(), Key::UNKNOWN_CODE) << name;
        EXPECT_FALSE(Key::fromPacked(key.getPacked()) == key) << name;
        EXPECT_TRUE(key.getName().ends_with("Unknown")) << name;
    }
    EXPECT_TRUE(Key(std::string_view("Shift ")) == Key(0, Key::SHIFT));
}

} // namespace
