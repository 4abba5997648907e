// Conditions and values against a second evaluator, which is made of tables of words and nothing of the first.
#include "midiinput/TranslationFactory.h"
#include "support/RandomCases.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

using namespace Backend::MidiInput::TranslationManagement;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using Backend::MidiEngine::QelMidiMessage;

namespace {

std::vector<std::string> wordsOf(const std::string& text) {
    std::vector<std::string> words(1);
    for (const char c : text) {
        if (c == ' ') {
            words.emplace_back();
        } else {
            words.back() += c;
        }
    }
    return words;
}

long long numberOf(const std::string& text) {
    long long number = 0;
    return std::istringstream(text) >> number ? number : 0;
}

struct Case {
    const char* word;
    bool below, equal, above; // whether the condition holds when the byte is that to the number
};
constexpr Case operators[] = {
    {"lt", true, false, false}, {"gt", false, false, true}, {"le", true, true, false},
    {"ge", false, true, true},  {"ne", true, false, true},  {"eq", false, true, false}, // the last for all else
};

bool expectedHolds(const std::string& condition, const std::map<std::string, int>& bytes) {
    std::vector<std::string> words = wordsOf(condition);
    words.resize(3);
    const auto byte = bytes.find(words[0]);
    if (byte == bytes.end()) {
        return true;
    }
    const Case* found = std::find_if(std::begin(operators), std::end(operators) - 1,
                                     [&](const Case& each) { return each.word == words[1]; });
    const long long number = numberOf(words[2]);
    return byte->second < number ? found->below : byte->second > number ? found->above : found->equal;
}

int expectedByte(const std::string& value, const std::map<std::string, int>& bytes) {
    const std::vector<std::string> words = wordsOf(value);
    const auto byte = bytes.find(words[0]);
    long long number = 0;
    if (byte != bytes.end()) {
        number = byte->second + (words.size() > 1 ? numberOf(words[1]) : 0);
    } else {
        number = numberOf(value);
    }
    return static_cast<int>(std::clamp(number, 0LL, 127LL));
}

template <typename List> std::string anyOf(RandomCases& random, const List& list) {
    return list[random.number<std::size_t>(0, std::size(list) - 1)];
}

TEST(TranslationRules, AgreeWithTables) {
    static const char* const firsts[] = {"D1", "D2", "D1", "D2", "D3", "Off", "d1", ""};
    static const char* const comparisons[] = {"lt", "gt", "le", "ge", "eq", "ne", "LT", "", "=="};
    static const char* const selections[] = {"", "up", "down", "selected", "x", "D12"};
    RandomCases random;
    for (int round = 0; round < 20'000; ++round) {
        const int d1 = random.number(-128, 127);
        const int d2 = random.number(-128, 127);
        const std::map<std::string, int> bytes{{"D1", d1}, {"D2", d2}};
        const int close = random.number(0, 1) == 0 ? d1 : d2;
        const int number = close + random.number(-2, 2);
        std::string condition = anyOf(random, firsts);
        if (random.number(0, 9) > 0) {
            condition += " " + anyOf(random, comparisons) + " " + std::to_string(number);
        }
        const auto value = [&] {
            const int kind = random.number(0, 9);
            const std::string byte = random.number(0, 1) == 0 ? "D1" : "D2";
            const int offset = random.number(-300, 300);
            const std::string sign = offset >= 0 && random.number(0, 1) == 0 ? "+" : "";
            return kind < 3   ? byte
                   : kind < 7 ? byte + " " + sign + std::to_string(offset)
                   : kind < 9 ? sign + std::to_string(offset)
                              : anyOf(random, selections);
        };
        const std::string first = value();
        const std::string second = value();
        const std::string xml = "<Translation condition=\"" + condition + "\"><MidiKeyPressure d1=\"" + first +
                                "\" d2=\"" + second + "\"/></Translation>";
        const auto translation = std::move(readTranslation(xml).value());
        const MidiMessage bare(MessageType::controllerChange, static_cast<std::int8_t>(d1),
                               static_cast<std::int8_t>(d2), 0);
        const QelMidiMessage incoming(bare, -1, 0, -1, Cell{});
        ASSERT_EQ(translation->getCondition().holdsFor(bare), expectedHolds(condition, bytes))
            << xml << " for " << d1 << ' ' << d2;
        const QelMidiMessage sent = *translation->getMidiMessage(incoming);
        ASSERT_EQ(+sent.getD1(), expectedByte(first, bytes)) << xml << " for " << d1 << ' ' << d2;
        ASSERT_EQ(+sent.getD2(), expectedByte(second, bytes)) << xml << " for " << d1 << ' ' << d2;

        // What is written means the same, and says so again.
        std::ostringstream written;
        writeTranslation(written, 0, *translation);
        const auto again = std::move(readTranslation(written.str()).value());
        ASSERT_EQ(again->getCondition().holdsFor(bare), expectedHolds(condition, bytes)) << written.str();
        ASSERT_EQ(again->getMidiMessage(incoming)->getMidiMessage(), sent.getMidiMessage()) << written.str();
        std::ostringstream twice;
        writeTranslation(twice, 0, *again);
        ASSERT_EQ(twice.str(), written.str());
    }
}

TEST(TranslationRules, WriteConditions) {
    const auto written = [](std::string_view text) { return MidiTranslationCondition(text).toXmlString(); };
    EXPECT_EQ(written("D2 gt 63"), "D2 gt 63");
    EXPECT_EQ(written("D1"), "D1 eq 0");
    EXPECT_EQ(written("D1 xx -5"), "D1 eq -5");
    EXPECT_EQ(written("D1  lt 5"), "D1 eq 0"); // words are parted by one blank
    EXPECT_EQ(written("D3 eq 1"), "Off");
    EXPECT_EQ(written(""), "Off");
    using Operator = MidiTranslationCondition::Operator;
    const MidiTranslationCondition beyond(MidiTranslationCondition::Byte::d1, static_cast<Operator>(6), 0);
    EXPECT_FALSE(beyond.holdsFor(MidiMessage()));
}

} // namespace
