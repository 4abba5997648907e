#include "host/TakeTalk.h"

#include "support/RandomCases.h"

#include <gtest/gtest.h>

using namespace Host;
using Backend::Recording::Take;
using Platform::Fault;
using Platform::Result;

namespace {

TEST(TakeTalk, QuestionsSurviveTheTextForm) {
    const TakeQuestion questions[] = {
        {.list = true, .fromLast = {}, .target = {}},
        {.list = false, .fromLast = {}, .target = "/a folder/\xC3\x9C\n2.mid"},
        {.list = false, .fromLast = 3, .target = "x"},
    };
    for (const TakeQuestion& question : questions) {
        const auto read = readTakeQuestion(textOf(question));
        ASSERT_TRUE(read) << textOf(question);
        EXPECT_EQ(*read, question);
    }
    for (const char* const text : {"", "list", "list\nx", "save", "save 1", "save 1\n", "save -1\nx", "save x\nx",
                                   "save 99999999999999999999\nx", "steal 1\nx"}) {
        EXPECT_FALSE(readTakeQuestion(text)) << text;
    }
}

TEST(TakeTalk, AnswersSurviveTheTextForm) {
    TakeAnswer answer;
    answer.saved = {true, 10, 4, 1'000'000'000'000};
    answer.takes = {{0, 5, -7, 3, 2}, {5, 1'000'000'000'000, 1'700'000'000'000, 0, 0}};
    const auto read = readTakeAnswer(textOf(Result<TakeAnswer>(answer)));
    ASSERT_TRUE(read) << read.fault().text();
    EXPECT_EQ(read.value().takes, answer.takes);
    EXPECT_EQ(read.value().saved, answer.saved);

    const auto fault = readTakeAnswer(textOf(Result<TakeAnswer>(Fault{"a: 1\nfile", 0, "is\nfull"})));
    ASSERT_FALSE(fault);
    EXPECT_EQ(fault.fault().text(), "a: 1?file: is?full") << "on one line, whatever the other program sent";
}

TEST(TakeTalk, AnyTextIsReadOrRefused) {
    RandomCases random;
    TakeAnswer answer;
    answer.takes.resize(3);
    const std::string texts[] = {textOf(TakeQuestion{.list = false, .fromLast = 3, .target = "x"}),
                                 textOf(Result<TakeAnswer>(answer)), textOf(Result<TakeAnswer>(Fault{"a", 0, "b"}))};
    for (int round = 0; round < 3000; ++round) {
        std::string text = texts[round % 3];
        text[random.number(std::size_t{0}, text.size() - 1)] = static_cast<char>(random.number(0, 255));
        text.resize(random.number(std::size_t{0}, text.size()));
        if (const auto question = readTakeQuestion(text)) {
            EXPECT_EQ(readTakeQuestion(textOf(*question)), question);
        }
        if (const auto read = readTakeAnswer(text)) {
            EXPECT_LE(read.value().takes.size(), 3U);
        }
    }
}

} // namespace
