#include "input/JoystickPoller.h"
#include "input/JoystickSection.h"
#include "input/JoystickWatcher.h"
#include "input/JoystickXml.h"
#include "platform/AutoResetEvent.h"
#include "support/ParsedXml.h"
#include "support/RandomCases.h"
#include "support/RecordingQel.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace Backend;
using namespace Backend::Joystick;
using Platform::JoystickPosition;
using Platform::JoystickPositions;

// Writes down what it is told: "0:1=99", "down 0:3", "repeat 0:3", "up 0:3".
class Listener final : public JoystickListener {
public:
    void axisChanged(const JoyAxisElementId& axis, std::int32_t value) override {
        add(TestSupport::textOf(axis) + "=" + std::to_string(value));
    }
    void buttonDown(const JoyButtonElementId& button, bool repeat) override {
        add((repeat ? "repeat " : "down ") + TestSupport::textOf(button));
    }
    void buttonUp(const JoyButtonElementId& button) override { add("up " + TestSupport::textOf(button)); }
    std::string take() { return std::exchange(text_, {}); }

private:
    void add(const std::string& what) { text_ += (text_.empty() ? "" : ", ") + what; }

    std::string text_;
};

JoystickPosition centred(std::uint32_t buttons = 0) {
    JoystickPosition position;
    position.axes.fill(32768);
    position.buttons = buttons;
    return position;
}

JoystickPosition movedTo(std::size_t axis, std::uint16_t raw) {
    JoystickPosition position = centred();
    position.axes[axis] = raw;
    return position;
}

TEST(JoystickWatcher, TellsTheDifferences) {
    const JoystickPosition still = centred();
    struct Row {
        JoystickPositions positions;
        const char* told;
    };
    const Row rows[] = {
        {{still, std::nullopt}, ""}, // the first look
        {{still, std::nullopt}, ""},
        {{movedTo(0, 0), std::nullopt}, "0:0=0"},
        {{movedTo(1, 0), std::nullopt}, "0:0=32768, 0:1=65535"}, // Y is mirrored, X goes back
        {{movedTo(2, 65535), std::nullopt}, "0:1=32767, 0:2=65535"},
        {{movedTo(3, 1), std::nullopt}, "0:2=32768, 0:3=1"},
        {{movedTo(4, 65535), std::nullopt}, "0:3=32768, 0:4=0"}, // U as well
        {{movedTo(5, 7), std::nullopt}, "0:4=32767, 0:5=7"},
        {{still, std::nullopt}, "0:5=32768"},
        {{centred(0x80000005), std::nullopt}, "down 0:0, down 0:2, down 0:31"},
        {{centred(0x80000004), std::nullopt}, "up 0:0"},
        {{centred(0x80000004), movedTo(0, 5)}, ""}, // another one is plugged in, first look
        {{centred(0x80000004), centred(2)}, "1:0=32768, down 1:1"},
        {{std::nullopt, centred(2)}, "up 0:2, up 0:31"}, // one is pulled out
        {{std::nullopt, std::nullopt}, "up 1:1"},
        {{centred(1), std::nullopt}, ""}, // back, with a button down: known only from its up on
        {{centred(0), std::nullopt}, "up 0:0"},
        {{centred(1), std::nullopt}, "down 0:0"},
    };
    Listener listener;
    JoystickWatcher watcher(listener);
    std::uint32_t time = 0;
    for (const Row& row : rows) {
        watcher.look(row.positions, time += 10);
        EXPECT_EQ(listener.take(), row.told) << "at " << time;
    }
}

// Looked at every 10 ms; over the wrap of the clock as well.
TEST(JoystickWatcher, RepeatsWhatIsHeld) {
    constexpr std::uint32_t delay = JoystickWatcher::REPEAT_DELAY_MILLISECONDS;
    constexpr std::uint32_t interval = JoystickWatcher::REPEAT_INTERVAL_MILLISECONDS;
    for (const std::uint32_t start : {0U, 0xFFFFFF00U}) {
        Listener listener;
        JoystickWatcher watcher(listener);
        std::vector<std::uint32_t> repeats;
        watcher.look({centred(8), std::nullopt}, start - 20); // was down before: does not repeat
        watcher.look({centred(8), std::nullopt}, start + 2000);
        watcher.look({centred(0), std::nullopt}, start - 10);
        EXPECT_EQ(listener.take(), "up 0:3");
        for (std::uint32_t passed = 0; passed < 1000; passed += 10) {
            watcher.look({centred(1), std::nullopt}, start + passed);
            const std::string told = listener.take();
            EXPECT_EQ(told, passed == 0 ? "down 0:0" : told.empty() ? "" : "repeat 0:0");
            if (passed > 0 && !told.empty()) {
                repeats.push_back(passed);
            }
        }
        ASSERT_FALSE(repeats.empty());
        EXPECT_EQ(repeats.front(), delay);
        for (std::size_t i = 1; i < repeats.size(); ++i) {
            EXPECT_EQ(repeats[i] - repeats[i - 1], interval + 10);
        }
        watcher.look({centred(0), std::nullopt}, start + 1000);
        EXPECT_EQ(listener.take(), "up 0:0");
        watcher.look({centred(1), std::nullopt}, start + 1010); // a new press waits again
        watcher.look({centred(1), std::nullopt}, start + 1020);
        EXPECT_EQ(listener.take(), "down 0:0");
    }
}

// Gives recorded positions, then the last of them for ever.
class Recording final : public Platform::Joysticks {
public:
    Recording(std::vector<JoystickPosition> positions, Platform::ThreadId& reader)
        : positions_(std::move(positions)), reader_(reader) {}
    JoystickPositions read() override {
        reader_ = Platform::currentThreadId();
        return {positions_[std::min(next_++, positions_.size() - 1)], std::nullopt};
    }

private:
    std::vector<JoystickPosition> positions_;
    Platform::ThreadId& reader_;
    std::size_t next_ = 0;
};

TEST(JoystickPoller, LooksEveryTenMillisecondsOnItsOwnThread) {
    Listener listener;
    std::uint32_t time = 0; // the poller's own, moved by its sleep only
    Platform::ThreadId opener = 0;
    Platform::ThreadId reader = 0;
    Platform::AutoResetEvent secondPassed;
    {
        std::vector<JoystickPosition> positions(2, centred());
        positions.push_back(movedTo(0, 9));
        positions.push_back(centred(1));
        const JoystickPoller poller(
            [&]() -> std::unique_ptr<Platform::Joysticks> {
                opener = Platform::currentThreadId();
                return std::make_unique<Recording>(positions, reader);
            },
            listener,
            {[&] { return time; },
             [&](unsigned milliseconds) {
                 EXPECT_EQ(milliseconds, 10U);
                 time += milliseconds;
                 if (time == 550) {
                     secondPassed.signal();
                 }
                 Platform::sleepMilliseconds(0);
             }});
        secondPassed.wait();
    }
    const std::string told = listener.take();
    EXPECT_TRUE(told.starts_with("0:0=9, 0:0=32768, down 0:0, repeat 0:0")) << told;
    EXPECT_NE(opener, Platform::currentThreadId());
    EXPECT_EQ(opener, reader);
}

class JoysticksOfAProgram : public testing::Test {
protected:
    void read(const std::string& xml) { joysticks.read(TestSupport::parsed(xml)); }
    [[nodiscard]] std::string written(bool allowReference = false) const {
        std::ostringstream out;
        joysticks.write(out, 0, allowReference);
        return out.str();
    }
    // "STATUS D1 D2" of what was played since the last call.
    std::string sent() { return std::exchange(played, {}); }
    std::string down(const JoyButtonElementId& button, bool repeat = false) {
        joysticks.buttonDown(button, repeat);
        return sent();
    }
    std::string up(const JoyButtonElementId& button) {
        joysticks.buttonUp(button);
        return sent();
    }

    JoysticksOfAProgram() {
        qel.whenPlayed = [this](const MidiEngine::QelMidiMessage& message) {
            const MidiEngine::MidiMessage& midi = message.getMidiMessage();
            played += (played.empty() ? "" : ", ") + std::to_string(message.getMidiMessage().getStatusWithChannel()) +
                      " " + std::to_string(midi.getD1()) + " " + std::to_string(midi.getD2());
        };
    }

    TestSupport::RecordingQel qel;
    TemporaryFolder folder;
    std::vector<std::string> faults;
    std::function<void(const Platform::Fault&)> reportFault = [this](const Platform::Fault& fault) {
        faults.push_back(fault.reason);
    };
    JoystickSection joysticks{qel, folder.path() / "Presets", reportFault};
    std::string played;
};

std::string noteButton(int joystick, int button, int note, const std::string& attributes = {}) {
    const std::string data = " note=\"" + Note(static_cast<std::int8_t>(note)).getName() + "\" velocity=\"9\"/>";
    return "<Button joystick=\"" + std::to_string(joystick) + "\" button=\"" + std::to_string(button) +
           "\"><Function " + attributes + "><Down><MidiNoteOn" + data + "</Down><Up><MidiNoteOff" + data +
           "</Up></Function></Button>";
}

TEST_F(JoysticksOfAProgram, AxesSendTheirEvents) {
    read(R"(<Joystick>
        <Axis axis="X"><Function midiEvent="Pitch Bend" max="16383"/>
            <Function midiEvent="Controller Change,1" min="127" max="0" channel="2"/></Axis>
        <Axis joystick="1" axis="R"><Function midiEvent="Start Song"/><Function midiEvent="System Exclusive"/></Axis>
        <Axis axis="x"><Function midiEvent="Controller Change,9"/></Axis>
    </Joystick>)");
    struct Row {
        JoyAxisElementId axis;
        int position;
        const char* sent;
    };
    const Row rows[] = {
        {{0, 0}, 0, "224 0 0, 178 1 127"},
        {{0, 0}, 32768, "224 0 64, 178 1 63"},
        {{0, 0}, 65535, "224 127 127, 178 1 0"},
        {{0, 1}, 0, ""},
        {{1, 0}, 0, ""},
        {{1, 5}, 0, "250 0 0"},
        {{7, 99}, 0, ""},
    };
    for (const Row& row : rows) {
        joysticks.axisChanged(row.axis, row.position);
        EXPECT_EQ(sent(), row.sent) << TestSupport::textOf(row.axis) << ' ' << row.position;
    }
}

TEST_F(JoysticksOfAProgram, ButtonsAreHeldAsKeysAre) {
    const JoyButtonElementId first{0, 0};
    read(
        "<Joystick>" + noteButton(0, 0, 60) + noteButton(1, 31, 61) +
        R"(<Button button="3"><Function keepSending="true"><Down><MidiControllerChange controller="1" value="1"/></Down>
            <Up><MidiControllerChange controller="1" value="0"/></Up></Function></Button></Joystick>)");
    EXPECT_EQ(down(first), "144 60 9");
    EXPECT_EQ(down(first, true), ""); // a held button does not strike its note again
    EXPECT_EQ(down(first), "");
    EXPECT_EQ(down({1, 31}), "144 61 9");
    EXPECT_EQ(down({0, 3}), "176 1 1");
    EXPECT_EQ(down({0, 3}, true), "176 1 1");
    read("<Joystick/>"); // what is held ends as it began
    EXPECT_EQ(down(first, true), "");
    EXPECT_EQ(up(first), "128 60 9");
    EXPECT_EQ(up({1, 31}), "128 61 9");
    EXPECT_EQ(up({0, 3}), "176 1 0");
    EXPECT_EQ(down(first), "");
    EXPECT_EQ(up(first), "");
    for (const JoyButtonElementId& none : {JoyButtonElementId{0, 32}, {2, 0}, {-1, 0}, {0, -1}}) {
        EXPECT_EQ(down(none), "");
        EXPECT_EQ(up(none), "");
    }
}

TEST_F(JoysticksOfAProgram, AreReadMergedAndWritten) {
    const std::string absurd =
        R"(<Joystick><Axis joystick="x" axis="Q"><Function min="a" max="" offset="-"/></Axis><Button button="y"/>)"
        R"(<Button joystick="5" button="77"><Function><Down><Nothing/></Down></Function></Button><Key/></Joystick>)";
    read(absurd);
    EXPECT_EQ(written(), "<Joystick merge=\"false\">\n"
                         "\t<Axis joystick=\"0\" axis=\"\">\n"
                         "\t\t<Function midiEvent=\"\" output=\"-1\" channel=\"-1\" zone=\"-1\" min=\"0\" max=\"127\" "
                         "offset=\"0\"/>\n"
                         "\t</Axis>\n"
                         "\t<Button joystick=\"0\" button=\"0\">\n"
                         "\t</Button>\n"
                         "\t<Button joystick=\"5\" button=\"77\">\n"
                         "\t\t<Function keepSending=\"false\">\n"
                         "\t\t</Function>\n"
                         "\t</Button>\n"
                         "</Joystick>\n");
    std::string text = "<Joystick>";
    for (const char* letter : {"X", "Y", "Z", "U", "V", "R"}) {
        text += std::string("<Axis axis=\"") + letter + "\"><Function midiEvent=\"Pitch Bend\" offset=\"-5\"/></Axis>";
    }
    read(text + noteButton(1, 2, 60, "keepSending=\"true\"") + "</Joystick>");
    const std::string all = written();
    for (int axis = 0; axis < 6; ++axis) {
        EXPECT_NE(joysticks.map().axes.find({0, axis}), nullptr) << axis;
    }
    read(all);
    EXPECT_EQ(written(), all);

    read("<Joystick merge=\"true\"><Axis axis=\"X\"/>" + noteButton(1, 2, 61) + noteButton(0, 2, 62) + "</Joystick>");
    EXPECT_EQ(joysticks.map().axes.size(), 6U);
    EXPECT_TRUE(joysticks.map().axes.find({0, 0})->events.empty());
    EXPECT_EQ(joysticks.map().buttons.size(), 2U);
    read("<Joystick/>");
    EXPECT_EQ(written(), "<Joystick merge=\"false\">\n</Joystick>\n");
}

TEST_F(JoysticksOfAProgram, StandForTheirPreset) {
    read("<Joystick>" + noteButton(0, 0, 60) + "<Axis axis=\"X\"/></Joystick>");
    joysticks.savePreset("mine", {});
    EXPECT_EQ(written(true), "<Joystick preset=\"mine\" merge=\"false\">\n</Joystick>\n");
    joysticks.savePreset("button", {{}, {{0, 0}}});
    joysticks.put([] {
        JoystickMap map;
        map.axes.store({0, 0}, AxisConfiguration{{0, 0}});
        return map;
    }());
    EXPECT_EQ(written(true), "<Joystick preset=\"mine\" merge=\"false\">\n</Joystick>\n"); // an idle axis is nothing
    read(R"(<Joystick preset="gone"/>)");                                                  // nothing stands in
    EXPECT_TRUE(joysticks.map().axes.empty() && joysticks.map().buttons.empty());
    EXPECT_EQ(written(true), "<Joystick preset=\"gone\" merge=\"false\">\n</Joystick>\n");
    joysticks.loadPreset("mine");
    EXPECT_EQ(joysticks.map().axes.size(), 1U);
    joysticks.setDefault();
    joysticks.loadPreset("button");
    EXPECT_TRUE(joysticks.map().axes.empty());
    EXPECT_EQ(joysticks.map().buttons.size(), 1U);
    joysticks.loadPreset("nothing");
    EXPECT_EQ(faults.size(), 1U);
}

} // namespace
