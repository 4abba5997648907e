// The text of sequences, their files, and what is said of bad ones.
#include "generators/SequenceText.h"
#include "generators/SequenceXml.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace Backend::SequenceManagement;

Sequence someSequence(RandomCases& random) {
    Sequence sequence;
    sequence.steps.resize(random.number<std::size_t>(0, 6));
    for (Step& step : sequence.steps) {
        step.resize(random.number<std::size_t>(1, 4));
        for (StepEntry& entry : step) {
            entry.rest = random.number(0, 3) == 0;
            if (!entry.rest) {
                entry.noteOffset = random.number(-200, 200);
                entry.velocityOffset = random.number(0, 1) * random.number(-200, 200);
            }
            entry.length = random.number(0, 1) == 0 ? StepEntry::usualLength : random.number(1, 4000);
        }
    }
    return sequence;
}

TEST(SequenceTextTest, WhatIsWrittenIsReadBackAndIsFine) {
    RandomCases random;
    for (int i = 0; i < 300; ++i) {
        const Sequence sequence = someSequence(random);
        const std::string text = textOf(sequence);
        ASSERT_EQ(sequenceOf(text), sequence) << text;
        ASSERT_EQ(faultsOfSequence(text), std::vector<std::string>{}) << text;
        std::ostringstream file;
        XmlWriter xml(file);
        writeSequenceFile(xml, sequence);
        const auto root = Platform::parseXml(file.str(), "test");
        ASSERT_TRUE(root) << file.str();
        ASSERT_EQ(readSequenceFile(root.value()), sequence) << file.str();
    }
}

TEST(SequenceTextTest, TheTextForm) {
    const Sequence sequence{{{StepEntry{}, StepEntry{}}, {StepEntry{}}, {StepEntry{}}, {StepEntry{}}}};
    Sequence three = sequenceOf("0|7,-,12 V5 L960,- L960");
    EXPECT_EQ(three.steps.size(), 4U);
    EXPECT_EQ(textOf(three), "0|7,-,12 V5 L960,- L960");
    EXPECT_EQ(textOf(sequence), "0|0,0,0,0");
    three.steps[2][0].length = 1920;
    EXPECT_EQ(textOf(three), "0|7,-,12 V5,- L960");
}

struct Bad {
    const char* text;
    const char* read;  // as it is written again
    const char* fault; // the first
};
void PrintTo(const Bad& bad, std::ostream* out) {
    *out << bad.text;
}
class BadSequenceTest : public testing::TestWithParam<Bad> {};

TEST_P(BadSequenceTest, IsReadAsFarAsItMakesSenseAndSaid) {
    EXPECT_EQ(textOf(sequenceOf(GetParam().text)), GetParam().read);
    const std::vector<std::string> faults = faultsOfSequence(GetParam().text);
    ASSERT_FALSE(faults.empty());
    EXPECT_EQ(faults.front(), GetParam().fault);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadSequenceTest,
    testing::Values(Bad{"0,7,", "0,7", "\",\" at the end begins no step"},
                    Bad{"0,,7", "0,-,7", "step 2: an entry is empty; a rest is written \"-\""},
                    Bad{"0,x,7", "0,-,7", "step 2: \"x\" is neither a note offset nor a rest"},
                    Bad{"3x V5", "3 V5", "step 1: \"3x\" is neither a note offset nor a rest"},
                    Bad{"0 V,1 L2x", "0,1", "step 1: \"V\" is neither a velocity offset (V10) nor a length (L960)"},
                    Bad{"0 v5 L9", "0 L9", "step 1: \"v5\" is neither a velocity offset (V10) nor a length (L960)"},
                    Bad{"0|,1", "0|-,1", "step 1: an entry is empty; a rest is written \"-\""},
                    Bad{"0 L0", "0 L0", "step 1: the length \"L0\" is below 1"}));

TEST(SequenceFileTest, IsCheckedWithFileAndLine) {
    const auto root = Platform::parseXml(
        "<SequenceFile>\n<Sequence a=\"1\">0,y</Sequence>\n<Sequence>0</Sequence><Step/></SequenceFile>", "test");
    ASSERT_TRUE(root);
    std::vector<Platform::Fault> faults;
    checkSequenceFile(root.value(), "a.seq", faults);
    std::string text;
    for (const Platform::Fault& fault : faults) {
        text += fault.text() + "\n";
    }
    EXPECT_EQ(text, "a.seq:2: unknown attribute a of <Sequence>\n"
                    "a.seq:3: unknown element <Step> in <SequenceFile>\n"
                    "a.seq:2: step 2: \"y\" is neither a note offset nor a rest\n"
                    "a.seq:3: there is more than one <Sequence>; the first is read\n");
    EXPECT_EQ(textOf(readSequenceFile(root.value())), "0,-");
}

} // namespace
