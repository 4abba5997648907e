// Oscillators through the whole backend: functions, programs, presets.
#include "BackendRig.h"
#include "backend/OscMessageManager.h"
#include "backend/OscillatorNotices.h"
#include "core/QelMessageManager.h"

#include <gtest/gtest.h>

namespace {

using Backend::Oscillators::OscillatorNotices;

class OscillatorsTest : public ::testing::Test {
protected:
    // What the functions play in the tick in which they are executed.
    std::string afterFunctions(const std::vector<std::string>& functions) {
        return rig.after([&](Backend::QelMessageManager& backend) {
            for (const std::string& each : functions) {
                backend.postExecuteFunction(each);
            }
        });
    }
    // The section as the program would be saved now, a line an oscillator.
    std::vector<std::string> saved() {
        std::string text;
        rig.afterDirect([&](Backend::QelIF& qel) { text = qel.getProgramText(); });
        std::vector<std::string> lines;
        for (std::size_t at = text.find("<Oscillator "); at != std::string::npos; at = text.find("<Oscillator ", at)) {
            const std::size_t end = text.find("/>", at);
            lines.push_back(text.substr(at, end + 2 - at));
            at = end;
        }
        return lines;
    }
    std::vector<std::string> speeds() {
        std::vector<std::string> speeds;
        for (const std::string& line : saved()) {
            const std::size_t at = line.find("speed=\"") + 7;
            speeds.push_back(line.substr(at, line.find('"', at) - at));
        }
        return speeds;
    }
    void load(const std::string& oscillators) {
        const std::string file =
            rig.writeFile("test.prg", "<ProgramFile><Program name='Test'>" + oscillators + "</Program></ProgramFile>");
        rig.after([&](Backend::QelMessageManager& backend) { backend.postLoadProgram(file); });
    }
    void SetUp() override {
        load("<Oscillators>"
             "<Oscillator type='pulse' speed='480' speedMode='ppq' midiMessage='Controller Change,1' stopValue='5'/>"
             "<Oscillator type='pulse' speed='480' speedMode='ppq' midiMessage='Controller Change,2' stopValue='6'/>"
             "<Oscillator type='pulse' speed='40' midiMessage='Controller Change,3' stopValue='7'/>"
             "</Oscillators>");
    }

    BackendRig rig;
};

TEST_F(OscillatorsTest, AreStartedAndStoppedAsTheFunctionSays) {
    struct Row {
        const char* which;
        const char* how;
        const char* played;
    };
    const Row rows[] = {
        {"1", "off", ""},               // does not play
        {"selected", "on", "0 B0 1 0"}, // the first one is selected from the start
        {"selected", "on", ""},         // plays already
        {"up", "on", "0 B0 2 0"},       // the neighbour
        {"down", "toggle", "0 B0 3 0"}, // from the first on to the last
        {"7", "on", ""},                // there is none
        {"all", "toggle", "0 B0 1 5; 0 B0 2 6; 0 B0 3 7"},
        {"all", "on", "0 B0 1 0; 0 B0 2 0; 0 B0 3 0"},
        {"0", "off", "0 B0 1 5"},
        {"all", "toggle", "0 B0 2 6; 0 B0 3 7; 0 B0 1 0"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(
            afterFunctions({std::string("<ChangeOscPlaying type=\"") + row.which + "\" value=\"" + row.how + "\"/>"}),
            row.played)
            << row.which << ' ' << row.how;
    }
}

TEST_F(OscillatorsTest, SpeedsOfThoseThatAreMeant) {
    using Speeds = std::vector<std::string>;
    struct Row {
        const char* select;
        const char* which;
        const char* value;
        Speeds speeds;
    };
    const Row rows[] = {
        {"0", "0", "+1", {"360", "480", "40"}},
        {"0", "1", "-1", {"360", "640", "40"}},
        {"2", "selected", "-127", {"360", "640", "30720"}},
        {"2", "2", "127", {"360", "640", "40"}},
        {"2", "up", "+1", {"320", "480", "40"}},  // "up" means all here
        {"all", "1", "+9", {"240", "360", "40"}}, // a selected one stands for all selected ones
        {"1", "5", "+1", {"240", "360", "40"}},
        {"9", "selected", "100", {"240", "100", "40"}}, // nothing has that id: the selection stays
    };
    for (const Row& row : rows) {
        afterFunctions({std::string("<DataSelectOsc type=\"") + row.select + "\"/>",
                        std::string("<ChangeOscSpeed type=\"") + row.which + "\" value=\"" + row.value + "\"/>"});
        EXPECT_EQ(speeds(), row.speeds) << row.select << ' ' << row.which << ' ' << row.value;
    }
}

TEST_F(OscillatorsTest, AnotherProgramStopsThem) {
    afterFunctions({"<ChangeOscPlaying type=\"1\" value=\"on\"/>"});
    const std::string file = rig.writeFile("other.prg", "<ProgramFile><Program name='Other'><Layers>"
                                                        "<Layer channel='9'/></Layers></Program></ProgramFile>");
    EXPECT_EQ(rig.after([&](Backend::QelMessageManager& backend) { backend.postLoadProgram(file); }), "0 B0 2 6")
        << "by the layers that it played by";
    EXPECT_TRUE(saved().empty());
    EXPECT_EQ(afterFunctions({"<ChangeOscPlaying type=\"all\" value=\"on\"/>"}), "");
}

TEST_F(OscillatorsTest, PresetsReplaceOrAppend) {
    const auto preset = [&](const std::string& name, const std::string& section) {
        rig.writeFile("Oscillator Presets/" + name + ".pst", section);
    };
    preset("Add", "<Oscillators merge='true'><Oscillator speed='7'/></Oscillators>");
    preset("Set", "<Oscillators><Oscillator speed='8'/></Oscillators>");
    afterFunctions({"<LoadOscillatorPreset preset=\"Add\"/>"});
    EXPECT_EQ(speeds(), (std::vector<std::string>{"480", "480", "40", "7"}));
    afterFunctions({"<LoadOscillatorPreset preset=\"Set\"/>"});
    EXPECT_EQ(speeds(), std::vector<std::string>{"8"});
    afterFunctions({"<LoadOscillatorPreset preset=\"None\"/>"});
    EXPECT_EQ(speeds(), std::vector<std::string>{"8"});
    EXPECT_EQ(rig.takeFaults().size(), 1U);
    load("<Oscillators preset='Set' merge='false'/>");
    EXPECT_EQ(speeds(), std::vector<std::string>{"8"});
}

TEST_F(OscillatorsTest, AreEditedAndSavedThroughTheirDoor) {
    const std::vector<std::string> before = saved();
    rig.afterDirect([](Backend::QelIF& qel) {
        Backend::Oscillators::Oscillator changed;
        changed.id = 1;
        changed.speed = 11;
        Backend::Oscillators::Oscillator added;
        added.speed = 12;
        qel.getOscMessageManager().postPut({changed, added});
        qel.getOscMessageManager().postSavePreset("All", {});
        qel.getOscMessageManager().postSavePreset("Some", {{3}});
        qel.getOscMessageManager().postSet({});
        qel.getOscMessageManager().postLoadPreset("All");
        qel.getOscMessageManager().postLoadPreset("Some");
        qel.getOscMessageManager().postDeletePreset("Some");
        qel.getOscMessageManager().postLoadPreset("Some");
    });
    EXPECT_EQ(speeds(), (std::vector<std::string>{"480", "11", "40", "12", "12"}));
    EXPECT_EQ(saved().front(), before.front());
    EXPECT_EQ(rig.takeFaults().size(), 1U);
}

TEST(OscillatorNotices, GiveTheLatestValueOfEachAndWakeOnce) {
    int wakes = 0;
    bool taken = true;
    OscillatorNotices notices([&] {
        ++wakes;
        return taken;
    });
    const auto drained = [&] {
        std::string text;
        notices.drain([&](OscId id, std::int32_t value) {
            text += std::to_string(id.index) + ":" + std::to_string(value) + " ";
        });
        return text;
    };
    notices.oscillatorMoved({3}, 0);
    notices.oscillatorMoved({1}, -5);
    notices.oscillatorMoved({3}, 99);
    notices.oscillatorMoved({-1}, 1);
    EXPECT_EQ(wakes, 1);
    EXPECT_EQ(drained(), "1:-5 3:99 ");
    EXPECT_EQ(drained(), "");
    taken = false;
    notices.oscillatorMoved({0}, 1);
    notices.oscillatorMoved({0}, 2);
    EXPECT_EQ(wakes, 3) << "nobody has taken it up";
    EXPECT_EQ(drained(), "0:2 ");
}

} // namespace
