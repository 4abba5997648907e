// Version-2 files become files of today; what is not understood is said.
#include "backend/Version2Import.h"

#include "BackendRig.h"
#include "backend/FileCheck.h"
#include "core/QelMessageManager.h"
#include "platform/SafeFiles.h"
#include "platform/XmlDocument.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Backend::importVersion2;
using Backend::Version2Kind;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

const fs::path corpus = fs::path(TEMBREL_SOURCE_DIR) / "tests" / "corpus" / "version2";

struct Imported {
    std::string text;
    std::vector<std::string> notTaken; // "line: reason"
};

Imported import(const std::string& name, const std::string& destination) {
    const TemporaryFolder folder;
    const auto result = importVersion2(corpus / name, folder.path() / destination);
    if (!result) {
        return {result.fault().reason, {}};
    }
    const auto written = Platform::readWholeFile(folder.path() / destination, 1'000'000);
    EXPECT_EQ(written ? written.value() : "", result.value().text);
    Imported imported{result.value().text, {}};
    for (const Platform::Fault& fault : result.value().notTaken) {
        imported.notTaken.push_back(std::to_string(fault.line) + ": " + fault.reason);
    }
    EXPECT_THAT(Backend::checkFile(folder.path() / destination, folder.path()), testing::SizeIs(testing::Le(1)));
    return imported;
}

TEST(Version2Import, ABank) {
    const Imported bank = import("bank.v2", "bank.bnk");
    EXPECT_THAT(
        bank.notTaken,
        ElementsAre("19: a line that is not understood", "20: minNote of <Layer>: \"H9\" is not a note from C-1 to G9",
                    "21: channel of <Layer>: \"17\" is not in the range 0..15", "22: an action that is not understood",
                    "23: id of <Key>: \"Qx\" is not a key like Shift F1", "25: there are more than 2 fields"));
    EXPECT_THAT(bank.text,
                AllOf(HasSubstr("<Bank>\n<Program name=\"Split &amp; Bend\" tempo=\"96\" tempoSource=\"0\">\n"),
                      HasSubstr("\t<Oscillators preset=\"000 - Default\" merge=\"false\">\n\t</Oscillators>\n"),
                      HasSubstr("<Layer channel=\"1\" minNote=\"C-1\" maxNote=\"B3\"/>"),
                      HasSubstr("preset=\"010 - Split\""),
                      HasSubstr("name=\"Bend\" release=\"8192\" value=\"8192\" min=\"0\" max=\"16383\">")));
    EXPECT_THAT(bank.text,
                AllOf(HasSubstr("<Program name=\"Plain\" tempo=\"120\" tempoSource=\"0\">\n"),
                      HasSubstr("\t<Layers preset=\"000 - Default\""), HasSubstr("<Zone id=\"3\" transpose=\"5\"/>"),
                      HasSubstr("name=\"Same key twice\" tempo=\"500\""), Not(HasSubstr("Qx"))));
    EXPECT_THAT(bank.text.substr(bank.text.find("Same key twice")),
                HasSubstr("</Function>\n\t\t\t<Function>\n\t\t\t\t<Down>\n\t\t\t\t\t<MidiNoteOn note=\"E4\"/>"));
}

TEST(Version2Import, AProgramAndAPreset) {
    const Imported program = import("program.v2", "program.prg");
    EXPECT_THAT(program.notTaken, ElementsAre("4: a line that is not understood"));
    EXPECT_THAT(program.text, HasSubstr("<ProgramFile>\n<Program name=\"Only\""));
    const Imported preset = import("preset.v2", "preset.pst");
    EXPECT_THAT(preset.notTaken, ElementsAre("3: a line of another section than the first"));
    EXPECT_THAT(
        preset.text,
        HasSubstr("?>\n<Controls merge=\"false\">\n\t<Control cell=\"1,2\" type=\"knob\" name=\"H\xC3\xB6he\""));
}

// One bad line must not cost the rest.
TEST(Version2Import, WhateverALineHoldsTheOthersAreImported) {
    const auto converted = Backend::convertVersion2("V\t2\tbank\nP\ta\x01\xEF\xBF\xBF"
                                                    "b\nL\t3\n"
                                                    "K\tQ\t\t\tMidiNoteOn note=C4 note=C5\nL\t4\n",
                                                    "f");
    ASSERT_TRUE(converted) << converted.fault().text();
    const auto read = Platform::parseXml(converted.value().text, "f");
    ASSERT_TRUE(read) << read.fault().text();
    EXPECT_EQ(*read.value().children.front().attribute("name"), "a  b");
    EXPECT_EQ(read.value().children.front().child("Layers")->children.size(), 2U);
    ASSERT_EQ(converted.value().notTaken.size(), 1U);
    EXPECT_EQ(converted.value().notTaken.front().line, 4);
}

TEST(Version2Import, TheNumberOfASequence) {
    struct Row {
        const char* fields; // number, mode
        const char* sequence;
        bool isTaken;
    };
    const Row rows[] = {
        {"\t", "", true},
        {"1\t1", "preset=\"002 - Oct 2 Up\" useNote=\"false\" useVelocity=\"true\"", true},
        {"44\t2", "preset=\"042 - Drums 9\" useNote=\"true\" useVelocity=\"true\"", true},
        {"111", "preset=\"094 - m2 Down (2)\" useNote=\"true\" useVelocity=\"false\"", true},
        {"74\t1", "", true},
        {"73\t1", "", false},
        {"112", "", false},
        {"1x", "", false},
    };
    for (const Row& row : rows) {
        const std::string text = "V\t2\tprogram\nP\tOne\nL" + std::string(13, '\t') + row.fields + "\n";
        const auto converted = Backend::convertVersion2(text, "f");
        ASSERT_TRUE(converted) << row.fields;
        EXPECT_EQ(converted.value().notTaken.empty(), row.isTaken) << row.fields;
        const bool hasSequence = converted.value().text.find("<SequenceSetting") != std::string::npos;
        EXPECT_EQ(hasSequence, *row.sequence != 0) << row.fields;
        EXPECT_THAT(converted.value().text, HasSubstr(row.sequence)) << row.fields;
    }
}

TEST(Version2Import, WhatIsNoSuchFileIsRefused) {
    for (const char* text : {"", "\n\n", "; only a comment", "<Bank/>", "V\t3\tbank\nP\tx", "V\t2\tsong\nP\tx",
                             "V\t2\tbank", "V\t2\tbank\nZ\t1", "V\t2\tpreset\nP\tx", "VV\t2\tbank\nP\tx"}) {
        EXPECT_FALSE(Backend::convertVersion2(text, "f")) << text;
    }
    const TemporaryFolder folder;
    EXPECT_FALSE(importVersion2(folder.path() / "missing", folder.path() / "out"));
    EXPECT_FALSE(importVersion2(corpus / "bank.v2", folder.path() / "missing" / "out"));
    EXPECT_FALSE(importVersion2(corpus / "bank.v2", folder.path() / "out", Version2Kind::program));
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(Version2Import, TheBackendLoadsWhatItHasImported) {
    BackendRig rig;
    const std::string source = rig.writeFile("old", "V\t2\tbank\nP\tOne\nL\t4\nNonsense\nP\tTwo\nMore\n");
    const std::string target = rig.writeFile("new.bnk", "");
    std::vector<std::uint32_t> told;
    const Platform::WindowHandle window =
        Platform::createWindowEndpoint([&](const Platform::ThreadMessage& message) { told.push_back(message.id); });
    rig.after([&](Backend::QelMessageManager& backend) { backend.postImportVersion2Bank(source, target, window); });
    EXPECT_EQ(rig.afterKey(), "0 94 60 100; 0 84 60 64");
    EXPECT_THAT(rig.takeFaults(), ElementsAre("old:4: a line that is not understood; so are 1 more lines"));
    rig.after([&](Backend::QelMessageManager& backend) { backend.postImportVersion2Program(source, target, window); });
    EXPECT_THAT(rig.takeFaults(), ElementsAre("old: is a version-2 file of another kind"));
    EXPECT_TRUE(Platform::dispatchWindowMessages());
    EXPECT_THAT(told, ElementsAre(0x8000 + 123));
    Platform::destroyWindowEndpoint(window);
}

} // namespace
