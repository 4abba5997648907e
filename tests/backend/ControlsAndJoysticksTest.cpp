// Controls and joysticks in the whole backend: from their posts to the player.
#include "BackendRig.h"
#include "core/MessageManagerMaster.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "input/ControlDefaults.h"
#include "input/ControlMessageManager.h"
#include "input/JoystickMessageManager.h"
#include "platform/AutoResetEvent.h"
#include "platform/Joysticks.h"
#include "support/RandomCases.h"
#include "values/Note.h"

#include <atomic>
#include <gtest/gtest.h>

namespace {

using Backend::QelMessageManager;
using Backend::Controls::Control;
using Backend::Controls::ControlMessageManager;
using Backend::Joystick::JoystickMessageManager;

class ControlsAndJoysticks : public testing::Test {
protected:
    std::string afterControl(const std::function<void(ControlMessageManager&)>& post) {
        return rig.after([&](QelMessageManager&) { post(rig.qel->getControlMessageManager()); });
    }
    std::string afterJoystick(const std::function<void(JoystickMessageManager&)>& post) {
        return rig.after([&](QelMessageManager&) { post(rig.qel->getJoystickMessageManager()); });
    }
    std::string afterFunction(const std::string& xml) {
        return rig.after([&](QelMessageManager& backend) { backend.postExecuteFunction(xml); });
    }
    std::string programFile(const std::string& name, const std::string& sections) {
        return rig.writeFile(name, "<ProgramFile><Program>" + sections + "</Program></ProgramFile>");
    }
    void load(const std::string& path) {
        rig.after([&](QelMessageManager& backend) { backend.postLoadProgram(path); });
    }

    BackendRig rig;
};

TEST_F(ControlsAndJoysticks, DoWhatIsPosted) {
    EXPECT_EQ(afterControl([](auto& controls) { controls.postMove({0, 1}, 5); }), "0 B0 1 5");
    EXPECT_EQ(afterControl([](auto& controls) { controls.postSetValue({0, 1}, 500); }), "0 B0 1 127");
    EXPECT_EQ(afterControl([](auto& controls) { controls.postMove({65536, 1}, 5); }), ""); // not the cell 0,1
    EXPECT_EQ(afterControl([](auto& controls) { controls.postMove({0, 0}, 0); }), "0 E0 0 0");
    EXPECT_EQ(afterControl([](auto& controls) { controls.postRelease({0, 0}); }), "0 E0 0 64");
    EXPECT_EQ(afterControl([](auto& controls) { controls.postSelect({{0, 2}, {2, 3}}); }), "");
    EXPECT_EQ(afterFunction(R"(<ChangeControl type="selected" value="-1"/>)"), "0 B0 7 99; 0 B0 10 63");
    EXPECT_EQ(afterControl([](auto& controls) { controls.postPut({Control{{0, 2}}}); }), "");
    EXPECT_EQ(afterFunction(R"(<ChangeControl type="selected" value="-1"/>)"), "0 B0 10 62");
    EXPECT_EQ(afterControl([](auto& controls) {
                  Backend::Controls::ControlMap map;
                  map.store({2, 3}, *Backend::Controls::defaultControls().find({2, 3}));
                  controls.postSet(map);
                  controls.postSendAll();
              }),
              "0 B0 10 64");
    EXPECT_EQ(afterControl([](auto& controls) {
                  controls.postSavePreset("pan", {});
                  controls.postStorePreset("all", Backend::Controls::defaultControls());
              }),
              "");
    EXPECT_EQ(afterFunction(R"(<LoadControlPreset preset="all"/>)"), "");
    EXPECT_EQ(afterFunction(R"(<SendControlData type="0,2"/>)"), "0 B0 7 100");
    EXPECT_EQ(afterFunction(R"(<LoadControlPreset preset="pan"/>)"), "");
    EXPECT_EQ(afterFunction(R"(<SendControlData type="all"/>)"), "0 B0 10 64");
    EXPECT_EQ(afterControl([](auto& controls) { controls.postDeletePreset("pan"); }), "");
    EXPECT_EQ(rig.takeFaults(), std::vector<std::string>{});
    EXPECT_EQ(afterFunction(R"(<LoadControlPreset preset="pan"/>)"), "");
    EXPECT_EQ(rig.takeFaults().size(), 1U);
}

TEST_F(ControlsAndJoysticks, ControlsFollowWhatPlays) {
    EXPECT_EQ(rig.afterMidi(0xB5, 1, 44), "0 B0 1 44");
    EXPECT_EQ(afterFunction(R"(<ChangeControl type="2,1" value="+1"/>)"), "0 B0 1 45");
    EXPECT_EQ(afterFunction(R"(<MidiPitchBend value="100"/>)"), "0 E0 100 0");
    EXPECT_EQ(afterFunction(R"(<SendControlData type="0,0"/>)"), "0 E0 100 0");
    EXPECT_EQ(afterFunction(R"(<SendControlData type="0,1"/>)"), "0 B0 1 45");
}

TEST_F(ControlsAndJoysticks, BelongToTheProgram) {
    const std::string axis = R"(<Axis axis="X"><Function midiEvent="Controller Change,9"/></Axis>)";
    const std::string control =
        R"(<Control cell="4,4" type="knob"><Function midiEvent="Controller Change,8"/></Control>)";
    const auto moves = [&] {
        return afterControl([](auto& controls) {
                   controls.postMove({4, 4}, 1);
                   controls.postMove({0, 1}, 2);
               }) +
               "/" + afterJoystick([](auto& joysticks) {
                   joysticks.axisChanged({0, 0}, 65535);
               });
    };
    EXPECT_EQ(moves(), "0 B0 1 2/");
    load(programFile("1.prg", "<Joystick>" + axis + "</Joystick><Controls>" + control + "</Controls>"));
    EXPECT_EQ(moves(), "0 B0 8 1/0 B0 9 127");
    load(programFile("2.prg", R"(<Joystick merge="true"/><Controls merge="true"/>)"));
    EXPECT_EQ(moves(), "0 B0 8 1/0 B0 9 127");
    load(programFile("3.prg", ""));
    EXPECT_EQ(moves(), "0 B0 1 2/");
    EXPECT_EQ(rig.takeFaults(), std::vector<std::string>{});
}

// Gives the positions that the test hands it, one a look; a look waits for the next one.
class HandedPositions final : public Platform::Joysticks {
public:
    struct Hand {
        Platform::AutoResetEvent given;
        Platform::AutoResetEvent asked;
        Platform::JoystickPositions positions;
        std::atomic<bool> isOver = false; // looks do not wait any more

        // Comes back when the position has been looked at: then what it says has been posted.
        void show(const Platform::JoystickPosition& position) {
            positions = {position, std::nullopt};
            given.signal();
            asked.wait();
        }
        void end() {
            isOver = true;
            given.signal();
        }
    };
    explicit HandedPositions(Hand& hand) : hand_(hand) {}
    Platform::JoystickPositions read() override {
        hand_.asked.signal();
        if (!hand_.isOver) {
            hand_.given.wait();
        }
        return hand_.positions;
    }

private:
    Hand& hand_;
};

TEST_F(ControlsAndJoysticks, JoysticksArePolledWhereTheyAreWantedOnly) {
    HandedPositions::Hand hand;
    rig.stop();
    rig.openJoysticks = [&] { return std::make_unique<HandedPositions>(hand); };
    rig.start();
    load(programFile("j.prg", R"(<Joystick><Axis axis="Y"><Function midiEvent="Controller Change,9"/></Axis>
        <Button button="1"><Function><Down><MidiNoteOn note="C4" velocity="9"/></Down>
        <Up><MidiNoteOff note="C4" velocity="9"/></Up></Function></Button></Joystick>)"));
    hand.asked.wait();
    const auto afterShowing = [&](const Platform::JoystickPosition& position) {
        return rig.after([&](QelMessageManager&) { hand.show(position); });
    };
    EXPECT_EQ(afterShowing({}), "");
    EXPECT_EQ(afterShowing({{0, 65535}, 2}), "0 B0 9 0; 0 90 60 9");
    EXPECT_EQ(afterShowing({{0, 32768}, 0}), "0 B0 9 63; 0 80 60 9");
    hand.end();
    rig.stop();
}

// Buttons and controls in any order, while programs, presets and layers change: when all buttons are let go, nothing
// sounds.
TEST_F(ControlsAndJoysticks, StormsEndInSilence) {
    RandomCases random;
    const auto oneIn = [&](int times) { return random.number(1, times) == 1; };
    const auto anySection = [&] {
        std::string text = std::string("<Joystick merge=\"") + (oneIn(3) ? "true" : "false") + "\">";
        for (int button = 0; button < 6; ++button) {
            std::string data = " note=\"" + Note(random.number<std::int8_t>(60, 62)).getName() + "\" velocity=\"9\"";
            data += oneIn(3) ? " channel=\"" + std::to_string(random.number(0, 2)) + "\"/>" : "/>";
            text += "<Button joystick=\"" + std::to_string(button % 2) + "\" button=\"" + std::to_string(button) +
                    "\"><Function keepSending=\"" + (oneIn(3) ? "true" : "false") + "\"><Down><MidiNoteOn" + data +
                    "</Down><Up><MidiNoteOff" + data + "</Up></Function></Button>";
        }
        return text + "</Joystick><Layers><Layer/><Layer channel=\"1\" transpose=\"+7\"/></Layers>";
    };
    std::vector<std::string> programs;
    for (int i = 0; i < 4; ++i) {
        programs.push_back(programFile(std::to_string(i) + ".prg", anySection()));
    }
    load(programs[0]);
    for (int round = 0; round < 30; ++round) {
        rig.after([&](QelMessageManager& backend) {
            JoystickMessageManager& joysticks = rig.qel->getJoystickMessageManager();
            for (int step = random.number(1, 60); step > 0; --step) {
                const int number = random.number(0, 5);
                const JoyButtonElementId button{number % 2, number};
                switch (random.number(0, 20)) {
                case 0:
                    backend.postLoadProgram(programs[random.number<std::size_t>(0, programs.size() - 1)]);
                    break;
                case 1:
                    backend.postExecuteFunction(R"(<ChangeLayerTranspose type="all" value="+1"/>)");
                    break;
                case 2:
                case 3:
                    rig.qel->getControlMessageManager().postMove({0, random.number(0, 7)}, random.number(0, 127));
                    break;
                case 4:
                case 5:
                case 6:
                case 7:
                case 8:
                    joysticks.buttonUp(button);
                    break;
                default:
                    joysticks.buttonDown(button, oneIn(3));
                }
            }
            for (int number = 0; number < 6; ++number) {
                joysticks.buttonUp({number % 2, number});
            }
        });
        ASSERT_EQ(rig.player.sounding().size(), 0U) << "round " << round;
    }
}

} // namespace
