// The values of functions and sections: each row is a text, what it means, and what is written for it.
#include "support/RandomCases.h"
#include "values/Cell.h"
#include "values/ControlType.h"
#include "values/Fraction.h"
#include "values/JoyAxisElementId.h"
#include "values/JoyButtonElementId.h"
#include "values/NoteToggle.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectControlType.h"
#include "values/SelectType.h"
#include "values/TextNumbers.h"

#include <gtest/gtest.h>
#include <limits>
#include <unordered_set>
#include <vector>

namespace {

constexpr auto lowest = std::numeric_limits<std::int32_t>::min();
constexpr auto highest = std::numeric_limits<std::int32_t>::max();

TEST(TextNumbersTest, NumberAtTheBeginning) {
    struct Row {
        const char* text;
        std::optional<std::int32_t> number;
        bool isDecimal;
    };
    for (const auto& row : std::vector<Row>{{"0", 0, true},
                                            {"+12", 12, true},
                                            {"-12", -12, true},
                                            {" \t7 ", 7, true},
                                            {"007", 7, true},
                                            {"12abc", 12, false},
                                            {"1.5", 1, false},
                                            {"2147483647", highest, true},
                                            {"2147483648", highest, true},
                                            {"-2147483648", lowest, true},
                                            {"-99999999999999999999999", lowest, true},
                                            {"99999999999999999999999", highest, true},
                                            {"", std::nullopt, false},
                                            {"-", std::nullopt, false},
                                            {"+-5", std::nullopt, false},
                                            {"- 5", std::nullopt, false},
                                            {"abc", std::nullopt, false}}) {
        EXPECT_EQ(readDecimal(row.text), row.number) << row.text;
        EXPECT_EQ(isDecimal(row.text), row.isDecimal) << row.text;
    }
}

TEST(RelativeFixedValueTest, Texts) {
    struct Row {
        const char* text;
        bool relative;
        int value;
        const char* written;
    };
    for (const auto& row : std::vector<Row>{{"", true, 0, ""},
                                            {"  ", true, 0, ""},
                                            {"+0", true, 0, ""},
                                            {"-0", true, 0, ""},
                                            {"+1", true, 1, "+1"},
                                            {"-12", true, -12, "-12"},
                                            {" +24 ", true, 24, "+24"},
                                            {"0", false, 0, "0"},
                                            {"127", false, 127, "127"},
                                            {"+", true, 0, ""},
                                            {"abc", false, 0, "0"}}) {
        SCOPED_TRACE(row.text);
        const RelativeFixedValue value{std::string_view(row.text)};
        EXPECT_EQ(value.isRelative(), row.relative);
        EXPECT_EQ(value.getValue(), row.value);
        EXPECT_EQ(value.toXmlString(), row.written);
        EXPECT_EQ(RelativeFixedValue(value.toXmlString()), value);
    }
}

TEST(RelativeFixedValueTest, Applying) {
    EXPECT_EQ(RelativeFixedValue::relative(5).applyTo(10), 15);
    EXPECT_EQ(RelativeFixedValue::fixed(5).applyTo(10), 5);
    EXPECT_EQ(RelativeFixedValue::relative(highest).applyTo(1), highest);
    EXPECT_EQ(RelativeFixedValue::relative(lowest).applyTo(-1), lowest);
}

TEST(FractionTest, TextsAndScaling) {
    struct Row {
        const char* text;
        int numerator;
        int denominator;
        int of100;
    };
    for (const auto& row : std::vector<Row>{{"1_1", 1, 1, 100},
                                            {"1_2", 1, 2, 50},
                                            {"3_7", 3, 7, 42},
                                            {"-3_7", -3, 7, -42},
                                            {"5_3", 5, 3, 166},
                                            {"0_4", 0, 4, 0},
                                            {"5_0", 1, 1, 100},
                                            {"2147483647_1", highest, 1, highest},
                                            {"", 1, 1, 100},
                                            {"3", 1, 1, 100},
                                            {"3_", 1, 1, 100},
                                            {"3/4", 1, 1, 100}}) {
        SCOPED_TRACE(row.text);
        const Fraction fraction{std::string_view(row.text)};
        EXPECT_EQ(fraction.getNumerator(), row.numerator);
        EXPECT_EQ(fraction.getDenominator(), row.denominator);
        EXPECT_EQ(fraction.scale(100), row.of100);
        EXPECT_EQ(Fraction(fraction.toXmlString()), fraction);
    }
    EXPECT_EQ(Fraction(3, 4).toDisplayString(), "3/4");
}

// Words that a type reads from text and writes again.
template <typename Type, typename State> struct WordRow {
    const char* text;
    State state;
    const char* written;
};

TEST(WordValuesTest, OnOffToggle) {
    using State = OnOffToggle::State;
    for (const auto& row : std::vector<WordRow<OnOffToggle, State>>{{"on", State::on, "on"},
                                                                    {"off", State::off, "off"},
                                                                    {"toggle", State::toggle, "toggle"},
                                                                    {"On", State::toggle, "toggle"},
                                                                    {"", State::toggle, "toggle"}}) {
        const OnOffToggle toggle{std::string_view(row.text)};
        EXPECT_EQ(toggle.getState(), row.state) << row.text;
        EXPECT_EQ(toggle.toXmlString(), row.written) << row.text;
        for (const auto current : {false, true}) {
            EXPECT_EQ(toggle.applyTo(current), row.state == State::on || (row.state == State::toggle && !current));
        }
    }
}

TEST(WordValuesTest, NoteToggleInLayersAndInFunctions) {
    using State = NoteToggle::State;
    struct Row {
        const char* text;
        State inLayer;
        State inFunction;
    };
    for (const auto& row : std::vector<Row>{{"off", State::off, State::off},
                                            {"type1", State::type1, State::type1},
                                            {"type2", State::type2, State::type2},
                                            {"TYPE1", State::type1, State::off},
                                            {"Type2", State::type2, State::off},
                                            {"type3", State::off, State::off},
                                            {"type11", State::off, State::off},
                                            {"", State::off, State::off}}) {
        const NoteToggle toggle{std::string_view(row.text)};
        EXPECT_EQ(toggle.getState(), row.inLayer) << row.text;
        EXPECT_EQ(NoteToggle::fromExactText(row.text).getState(), row.inFunction) << row.text;
        EXPECT_EQ(NoteToggle::fromExactText(toggle.toXmlString()), toggle) << row.text;
    }
}

TEST(WordValuesTest, ControlType) {
    using Kind = Backend::Controls::ControlType::Kind;
    for (const auto& row :
         std::vector<WordRow<Backend::Controls::ControlType, Kind>>{{"edit", Kind::edit, "edit"},
                                                                    {"vfader", Kind::vfader, "vfader"},
                                                                    {"hfader", Kind::hfader, "hfader"},
                                                                    {" knob ", Kind::knob, "knob"},
                                                                    {"label", Kind::label, "label"},
                                                                    {"Knob", Kind::none, ""},
                                                                    {"", Kind::none, ""}}) {
        const Backend::Controls::ControlType type{std::string_view(row.text)};
        EXPECT_EQ(type.getKind(), row.state) << row.text;
        EXPECT_EQ(type.toXmlString(), row.written) << row.text;
    }
}

TEST(SelectionTest, SelectType) {
    using Kind = SelectType::Kind;
    struct Row {
        const char* text;
        Kind kind;
        int index;
        const char* written;
    };
    for (const auto& row : std::vector<Row>{{"up", Kind::up, 0, "up"},
                                            {"down", Kind::down, 0, "down"},
                                            {"selected", Kind::selected, 0, "selected"},
                                            {"all", Kind::all, 0, "all"},
                                            {"7", Kind::fixed, 7, "7"},
                                            {"-1", Kind::fixed, -1, "-1"},
                                            {"Up", Kind::fixed, 0, "0"},
                                            {"", Kind::fixed, 0, "0"}}) {
        SCOPED_TRACE(row.text);
        const SelectType select{std::string_view(row.text)};
        EXPECT_EQ(select.getKind(), row.kind);
        EXPECT_EQ(select.getIndex(), row.index);
        EXPECT_EQ(select.toXmlString(), row.written);
    }
}

TEST(SelectionTest, SelectControlTypeAndCell) {
    using Kind = SelectControlType::Kind;
    struct Row {
        const char* text;
        Kind kind;
        Cell cell;
        const char* written;
    };
    for (const auto& row : std::vector<Row>{{"up", Kind::up, {}, "up"},
                                            {"down", Kind::down, {}, "down"},
                                            {"left", Kind::left, {}, "left"},
                                            {"right", Kind::right, {}, "right"},
                                            {"selected", Kind::selected, {}, "selected"},
                                            {"all", Kind::all, {}, "all"},
                                            {"2,10", Kind::fixed, {2, 10}, "2,10"},
                                            {" 2 , 10 ", Kind::fixed, {2, 10}, "2,10"},
                                            {"2", Kind::fixed, {2, -1}, "2,-1"},
                                            {",10", Kind::fixed, {-1, 10}, "-1,10"},
                                            {"1,2,3", Kind::fixed, {1, 2}, "1,2"},
                                            {"", Kind::fixed, {}, "-1,-1"},
                                            {"Left", Kind::fixed, {}, "-1,-1"}}) {
        SCOPED_TRACE(row.text);
        const SelectControlType select{std::string_view(row.text)};
        EXPECT_EQ(select.getKind(), row.kind);
        EXPECT_EQ(select.getCell(), row.cell);
        EXPECT_EQ(select.toXmlString(), row.written);
    }
}

// Stored presets rely on an order of letters that is not the one of the positions.
TEST(IdsTest, JoystickAxisLetters) {
    auto axis = 0;
    for (const auto* const letter : {"X", "Y", "Z", "U", "V", "R"}) {
        EXPECT_EQ(JoyAxisElementId::axisFromLetter(letter), axis) << letter;
        EXPECT_EQ((JoyAxisElementId{1, axis}).axisLetter(), letter);
        ++axis;
    }
    for (const auto* const text : {"", "x", "W", "XY"}) {
        EXPECT_EQ(JoyAxisElementId::axisFromLetter(text), -1) << text;
    }
    EXPECT_EQ((JoyAxisElementId{0, -1}).axisLetter(), "");
    EXPECT_EQ((JoyAxisElementId{0, 6}).axisLetter(), "");
}

TEST(IdsTest, HashesTellGridNeighboursApart) {
    std::unordered_set<std::size_t> hashes;
    for (auto x = -1; x < 30; ++x) {
        for (auto y = -1; y < 30; ++y) {
            hashes.insert(std::hash<Cell>{}(Cell{x, y}));
        }
    }
    EXPECT_EQ(hashes.size(), 31U * 31U);
    EXPECT_NE(std::hash<JoyButtonElementId>{}({0, 1}), std::hash<JoyButtonElementId>{}({1, 0}));
    EXPECT_LT((Cell{1, 9}), (Cell{2, 0}));
}

} // namespace
