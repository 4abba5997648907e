// The sequences that come with the program: files, names, numbers; and those that the user adds.
#include "BackendRig.h"
#include "backend/SequenceNumbers.h"
#include "backend/SequencePresetManager.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "generators/SequenceText.h"
#include "generators/SequenceXml.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace {

using namespace Backend::SequenceManagement;

class SequencePresetsTest : public testing::Test {
protected:
    // The offsets of a file's only voice.
    std::vector<int> offsets(const std::string& name) {
        std::vector<int> numbers;
        const auto sequence = factory.find(name);
        EXPECT_TRUE(sequence) << name;
        for (const Step& step : sequence->steps) {
            EXPECT_EQ(step.size(), 1U) << name;
            numbers.push_back(step.front().noteOffset);
        }
        return numbers;
    }

    std::vector<std::string> faults;
    std::function<void(const Platform::Fault&)> report = [this](const Platform::Fault& fault) {
        faults.push_back(fault.text());
    };
    std::filesystem::path folder = std::filesystem::path(TEMBREL_SOURCE_DIR) / "data" / "factory" / "Sequences";
    SequencePresetManager factory{folder, report};
};

TEST_F(SequencePresetsTest, AllFilesAreThereAndWithoutFault) {
    const SequencePresetList list = factory.list();
    EXPECT_EQ(list.size(), 94U);
    int number = 0;
    for (const auto& [name, text] : list) {
        EXPECT_EQ(std::stoi(name.substr(0, 3)), ++number) << name;
        EXPECT_TRUE(text.starts_with("<Sequence>0") || text.starts_with("<Sequence>-")) << name;
        const auto root = Platform::readXmlFile(folder / (name + ".seq"));
        ASSERT_TRUE(root) << name;
        std::vector<Platform::Fault> found;
        checkSequenceFile(root.value(), name, found);
        EXPECT_TRUE(found.empty()) << found.front().text();
    }
}

TEST_F(SequencePresetsTest, EachNumberLoadsItsName) {
    const SequencePresetList list = factory.list();
    std::set<std::string> named;
    for (int number = -1; number <= sequenceNumbers; ++number) {
        const auto name = sequenceName(number);
        if (name && !name->empty() && !builtInSequence(*name)) {
            EXPECT_TRUE(list.contains(*name)) << number << ": " << *name;
            named.insert(*name);
        }
    }
    EXPECT_EQ(named.size(), 93U); // all but one, since number 44 stands for another's
    EXPECT_EQ(sequenceName(0), "001 - Oct 1 Up");
    EXPECT_EQ(sequenceName(22), "023 - Seq 0");
    EXPECT_EQ(sequenceName(32), "033 - Seq 10");
    EXPECT_EQ(sequenceName(43), "044 - Drums 11");
    EXPECT_EQ(sequenceName(44), "042 - Drums 9");
    EXPECT_EQ(sequenceName(49), "050 - Note 1 of 2");
    EXPECT_EQ(sequenceName(58), "059 - Note 1 of 6");
    EXPECT_EQ(sequenceName(71), "072 - Note 8 of 8");
    EXPECT_EQ(sequenceName(72), std::nullopt);
    EXPECT_EQ(sequenceName(74), "");
    EXPECT_TRUE(builtInSequence(sequenceName(75).value()));
    EXPECT_TRUE(builtInSequence(sequenceName(89).value()));
    EXPECT_EQ(sequenceName(90), "073 - Oct 1 Up (2)");
    EXPECT_EQ(sequenceName(111), "094 - m2 Down (2)");
    EXPECT_EQ(sequenceName(112), std::nullopt);
}

TEST_F(SequencePresetsTest, EachPlaysWhatItsNameSays) {
    for (int number = 0; number < 22; ++number) {
        const std::string name = sequenceName(number).value();
        const std::vector<int> steps = offsets(name);
        EXPECT_EQ(steps.front(), 0) << name;
        const auto [lowest, highest] = std::minmax_element(steps.begin(), steps.end());
        const bool downFirst = name.ends_with("Down-Up");
        const bool upFirst = name.ends_with("Up-Down");
        EXPECT_EQ(*lowest < 0, downFirst || (!upFirst && name.ends_with("Down"))) << name;
        if (const std::size_t oct = name.find("- Oct "); oct != std::string::npos) {
            EXPECT_EQ(*highest - *lowest, 12 * (name[oct + 6] - '0')) << name;
        }
        const auto turn = upFirst ? highest : downFirst ? lowest : steps.end() - 1;
        EXPECT_TRUE(*lowest < 0 ? std::is_sorted(steps.begin(), turn + 1, std::greater<>())
                                : std::is_sorted(steps.begin(), turn + 1))
            << name;
        if (upFirst || downFirst) { // and back, without the ends
            EXPECT_TRUE(std::equal(turn + 1, steps.end(), std::make_reverse_iterator(turn))) << name;
        }
        std::vector<int> twice;
        for (const int offset : steps) {
            twice.insert(twice.end(), 2, offset);
        }
        EXPECT_EQ(offsets(sequenceName(number + 90).value()), twice) << name;
    }
    for (int number = 49; number <= 71; ++number) {
        const std::string name = sequenceName(number).value();
        const std::size_t place = static_cast<std::size_t>(name[11] - '1');
        const auto sequence = factory.find(name);
        ASSERT_EQ(sequence->steps.size(), static_cast<std::size_t>(name[16] - '0')) << name;
        for (std::size_t step = 0; step < sequence->steps.size(); ++step) {
            EXPECT_EQ(sequence->steps[step].front().rest, step != place) << name;
        }
    }
    for (int number = 33; number <= 43; ++number) {
        const auto drums = factory.find(sequenceName(number).value());
        EXPECT_TRUE(drums->steps.size() == 16 || drums->steps.size() == 12) << number;
        EXPECT_GT(drums->steps.front().size(), 1U) << number; // several instruments under one key
    }
}

TEST_F(SequencePresetsTest, WhatIsAddedIsFoundWhatIsBadIsReported) {
    const TemporaryFolder temporary;
    SequencePresetManager own(temporary.path() / "Sequences", report);
    EXPECT_EQ(own.find("Mine"), nullptr);
    EXPECT_TRUE(own.list().empty());
    own.add("Mine", "0|7,-");
    ASSERT_TRUE(own.find("Mine"));
    EXPECT_EQ(textOf(*own.find("Mine")), "0|7,-");
    own.add("Mine", "<Sequence>12</Sequence>");
    EXPECT_EQ(textOf(*own.find("Mine")), "12");
    EXPECT_EQ(own.list(), (SequencePresetList{{"Mine", "<Sequence>12</Sequence>"}}));
    EXPECT_TRUE(faults.empty());
    own.add("Mine", "<Sequence>7");
    own.add("no/file", "7");
    EXPECT_EQ(faults.size(), 2U);
    EXPECT_EQ(textOf(*own.find("Mine")), "12");
    own.remove("Mine");
    EXPECT_EQ(own.find("Mine"), nullptr);
}

// Through the whole backend: what a layer's sequence stands for changes with the file, and the name is what is saved.
TEST(SequenceLayersTest, PlayWhatTheirNameStandsForByThen) {
    BackendRig rig;
    const std::string program =
        rig.writeFile("test.prg", "<ProgramFile><Program name='Test'><Layers><Layer><SequenceSetting preset='Mine' "
                                  "useVelocity='false'/></Layer></Layers></Program></ProgramFile>");
    rig.after([&](Backend::QelMessageManager& backend) { backend.postLoadProgram(program); });
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 80 60 64");
    rig.after([](Backend::QelMessageManager& backend) { backend.postAddSequencePreset("Mine", "0|7 V5"); });
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 90 67 100; 0 80 60 64; 0 80 67 64");
    rig.after([](Backend::QelMessageManager& backend) {
        backend.postAddSequencePreset("Mine", "<Sequence>12</Sequence>");
        backend.postAddSequencePreset("Mine", "<Sequence>");
    });
    EXPECT_EQ(rig.afterKey(), "0 90 72 100; 0 80 72 64");
    EXPECT_EQ(rig.takeFaults().size(), 1U);
    rig.after([](Backend::QelMessageManager& backend) {
        backend.postCall([](Backend::QelIF& qel) { qel.deleteSequencePreset("Mine"); });
    });
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 80 60 64");
    std::string text;
    rig.afterDirect([&](Backend::QelIF& qel) { text = qel.getProgramText(); });
    EXPECT_NE(text.find("<SequenceSetting preset=\"Mine\" useNote=\"true\" useVelocity=\"false\""), std::string::npos)
        << text;
}

} // namespace
