// Files with faults, and what is said of them.
#include "backend/FileCheck.h"

#include "platform/PathText.h"
#include "support/TemporaryFolder.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class FileCheck : public testing::Test {
protected:
    std::vector<std::string> faultsOf(const std::string& name, const std::string& text) {
        write(name, text);
        std::vector<std::string> faults;
        for (const Platform::Fault& fault : Backend::checkFile(folder.path() / name, folder.path() / "data")) {
            EXPECT_EQ(fault.file, Platform::textOf(folder.path() / name));
            faults.push_back(std::to_string(fault.line) + ": " + fault.reason);
        }
        return faults;
    }
    void write(const std::string& name, const std::string& text) {
        fs::create_directories((folder.path() / name).parent_path());
        std::ofstream(folder.path() / name, std::ios::binary) << text;
    }

    TemporaryFolder folder;
};

TEST_F(FileCheck, SaysEveryFaultWithItsLine) {
    struct Row {
        const char* file;
        const char* text;
        std::vector<std::string> faults;
    };
    for (
        const Row& row : {
            Row{"a.prg", "<ProgramFile><Program/></ProgramFile>", {}},
            Row{"a.prg", "<ProgramFile>\n<Program>\n</ProgramFile>", {"3: an end tag without its start tag"}},
            Row{"a.prg",
                "<Bank><Program/></Bank>",
                {"1: the root element is <Bank>, not <ProgramFile>, <QelProgramFile>"}},
            Row{"a.bnk", "<Bank/>", {"1: there is no <Program>"}},
            Row{"a.bnk", "<Bank><Program/>\n<Programm/></Bank>", {"2: unknown element <Programm> in <Bank>"}},
            Row{"a.prg",
                "<ProgramFile><Program/>\n<Program/></ProgramFile>",
                {"2: <ProgramFile> holds one element only"}},
            Row{"a.pst",
                "<Zones>\n<Zone id=\"1\"/>\n<Zone id=\"01\" transpose=\"200\"/></Zones>",
                {"3: <Zone id=\"1\"> is there twice, first in line 2",
                 "3: transpose of <Zone>: \"200\" is not in the range -127..127"}},
            Row{"a.pst",
                "<Controls>\n<Control cell=\"1,2\"/>\n<Control cell=\" +1, 02\"/></Controls>",
                {"3: <Control cell=\"1,2\"> is there twice, first in line 2"}},
            Row{"a.pst",
                "<MidiInput>\n<MidiEvent midiEvent=\"Controller Change,7\"/>\n"
                "<MidiEvent input=\"255\" midiEvent=\"Controller Change, 7\"/></MidiInput>",
                {"3: <MidiEvent input=\"255\" channel=\"255\" midiEvent=\"Controller Change,7\"> is there twice, first "
                 "in line 2"}},
            Row{"a.pst",
                "<MidiInput><MidiEvent><Translation>\n<MidiNoteOn d1=\"D1 +300\" d2=\"128\"/></Translation></MidiEvent>"
                "</MidiInput>",
                {"2: d2 of <MidiNoteOn>: \"128\" is not in the range 0..127"}},
            Row{"a.pst",
                "<Controls>\n<Control cell=\"1\"/>\n<Control cell=\"0,1\" colour=\"red\">x</Control></Controls>",
                {"2: cell of <Control>: \"1\" is not a cell like 2,0", "3: unknown attribute colour of <Control>",
                 "3: <Control> holds no text"}},
            Row{"a.pst",
                "<ComputerInput>\n<Key id=\"Qq\"><Function>\n<Down>\n<MidiNoteOn "
                "note=\"H3\"/>\n<ResetQel/></Down><Up>\n<Nothing/></Up>"
                "\n<Down/></Function></Key></ComputerInput>",
                {"2: id of <Key>: \"Qq\" is not a key like Shift F1", "5: <Down> holds one element only",
                 "4: note of <MidiNoteOn>: \"H3\" is not a note from C-1 to G9 or empty",
                 "6: unknown element <Nothing> in <Up>", "7: <Down> is there twice, first in line 3"}},
            Row{"a.prg",
                "<ProgramFile><Program><Layers/>\n<Zones/><Layers/></Program></ProgramFile>",
                {"2: <Layers> is there twice, first in line 1"}},
            Row{"a.anything",
                "<Joystick><Axis axis=\"Q\"/></Joystick>",
                {"1: axis of <Axis>: \"Q\" is not one of \"\", X, Y, Z, U, V, R"}},
        }) {
        EXPECT_EQ(faultsOf(row.file, row.text), row.faults) << row.text;
    }
    EXPECT_EQ(Backend::checkFile(folder.path() / "missing.prg", {}).size(), 1U);
}

// Beside the file when its folder is one of ours, else in the user's data.
TEST_F(FileCheck, PresetsAreLookedForWhereTheyBelong) {
    const std::string text =
        "<ProgramFile><Program><Layers preset=\"Mine\"/><Controls preset=\"000 - Default\"/><ComputerInput>"
        "<Key id=\"A\"><Function><Down>\n<LoadJoystickInputPreset preset=\"Mine\"/></Down></Function></Key>"
        "</ComputerInput></Program></ProgramFile>";
    const std::string layers = "1: preset of <Layers>: there is no \"Mine\" in \"Layer Presets\"";
    const std::string joystick = "2: preset of <LoadJoystickInputPreset>: there is no \"Mine\" in \"Joystick Presets\"";
    EXPECT_THAT(faultsOf("a.prg", text), testing::UnorderedElementsAre(layers, joystick));
    write("data/Layer Presets/Mine.pst", "<Layers/>");
    EXPECT_THAT(faultsOf("a.prg", text), ElementsAre(joystick));
    EXPECT_THAT(faultsOf("other/Banks/a.prg", text), testing::UnorderedElementsAre(layers, joystick));
    write("other/Joystick Presets/Mine.pst", "<Joystick/>");
    EXPECT_THAT(faultsOf("other/Banks/a.prg", text), ElementsAre(layers));
}

} // namespace
