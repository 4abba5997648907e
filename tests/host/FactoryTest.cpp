// The content that comes with the program.
#include "host/Rendering.h"
#include "platform/XmlDocument.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

const fs::path source = TEMBREL_SOURCE_DIR;
const fs::path factory = source / "data" / "factory";
const fs::path bankFile = factory / "Banks" / "Default Bank.bnk";

std::vector<std::string> programNames() {
    std::vector<std::string> names;
    const auto bank = Platform::readXmlFile(bankFile);
    EXPECT_TRUE(bank) << bank.fault().text();
    for (const Platform::XmlElement& program : bank ? bank.value().children : std::vector<Platform::XmlElement>()) {
        names.push_back(*program.attribute("name"));
    }
    return names;
}

std::string render(const fs::path& script, const std::vector<std::string>& options) {
    const TemporaryFolder data;
    std::vector<std::string> arguments = {"render", script.string(), "--events", "-", "--data", data.path().string()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramRun run = runTembrel(arguments);
    EXPECT_EQ(run.exitCode, 0) << run.error;
    EXPECT_EQ(run.error, "") << script;
    return run.output;
}

TEST(Factory, HasNoFault) {
    const ProgramRun run = runTembrel({"check", factory.string()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.error, "");
}

// tests/golden/factory: a script and its events for each slot. What comes out instead is written beside them.
TEST(Factory, EachProgramPlaysAsItIsKeptAsGolden) {
    const fs::path golden = source / "tests" / "golden" / "factory";
    const std::vector<std::string> names = programNames();
    EXPECT_EQ(names.size(), 32U);
    for (std::size_t slot = 0; slot < names.size(); ++slot) {
        const std::string number = (slot < 10 ? "0" : "") + std::to_string(slot);
        const std::string played =
            render(golden / (number + ".script"), {"--bank", bankFile.string(), "--slot", std::to_string(slot)});
        EXPECT_NE(played, "") << names[slot];
        const auto expected = TestSupport::contentOf(golden / (number + ".events"));
        if (expected != played) {
            std::ofstream(golden / (number + ".actual"), std::ios::binary) << played;
            ADD_FAILURE() << names[slot] << ": what came out is in tests/golden/factory/" << number << ".actual";
        }
    }
}

// Programs fall back to "000 - Default", with its file or without it.
TEST(Factory, TheDefaultPresetsAreWhatIsBuiltIn) {
    const TemporaryFolder folder;
    const fs::path program = folder.path() / "default.prg";
    std::ofstream(program) << R"(<ProgramFile><Program><Joystick preset="000 - Default"/>
        <ComputerInput preset="000 - Default"/><MidiInput preset="000 - Default"/><Controls preset="000 - Default"/>
        <Layers preset="000 - Default"/><Oscillators preset="000 - Default"/></Program></ProgramFile>)";
    for (const char* const script : {"default-keyboard.script", "controls.script", "defaults.script"}) {
        const fs::path file = source / "tests" / "golden" / script;
        EXPECT_EQ(render(file, {"--inputs", "2", "--program", program.string()}), render(file, {"--inputs", "2"}))
            << script;
    }
}

TEST(Factory, TheManualTellsHowToPlayEachProgram) {
    const auto manual = TestSupport::contentOf(source / "docs" / "manual" / "programs.md");
    std::size_t from = 0;
    for (const std::string& name : programNames()) {
        from = manual.find("| " + name + " | ", from);
        EXPECT_NE(from, std::string::npos) << name << " is missing, or not in its place";
    }
}

} // namespace
