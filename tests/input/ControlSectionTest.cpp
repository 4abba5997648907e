#include "input/ControlSection.h"

#include "input/ControlDefaults.h"
#include "midiengine/MidiEngine.h"
#include "support/FakePlayer.h"
#include "support/ParsedXml.h"
#include "support/RandomCases.h"
#include "support/RecordingQel.h"
#include "support/TemporaryFolder.h"

#include <deque>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace Backend;
using namespace Backend::Controls;
using MidiEngine::QelMidiMessage;
using Tell = ControlSection::Tell;

SelectControlType which(const std::string& text) {
    return SelectControlType(std::string_view(text));
}

// A section whose messages wait on the wire to the engine until the test lets them pass.
class ControlsOfAProgram : public testing::Test {
protected:
    ControlsOfAProgram() {
        qel.whenPlayed = [this](const QelMidiMessage& message) { wire.push_back(message); };
        engine.setMidiOutputPorts({{{"Out 1", "none", true}}, {{"Out 2", "none", true}}});
        engine.setLayerList(Layers::defaultLayers());
    }

    // What the section has sent since the last call: "STATUS D1 D2", with the output before it where it names one.
    std::string sent() {
        std::string text;
        for (const QelMidiMessage& message : wire) {
            std::string line = TestSupport::lineOf(message);
            line = line.substr(line.find(' ') + 1);
            line = line.starts_with("-1 ") ? line.substr(3) : line;
            text += (text.empty() ? "" : ", ") + line;
        }
        letAllPass();
        return text;
    }
    void letAllPass() {
        for (; !wire.empty(); wire.pop_front()) {
            engine.playMidi(wire.front());
        }
    }
    // A message from elsewhere passes the engine.
    void pass(int status, int d1, int d2, int channel = -1, int output = -1) {
        engine.playMidi({static_cast<MidiEngine::MessageType>(status), static_cast<std::int8_t>(d1),
                         static_cast<std::int8_t>(d2), static_cast<std::int8_t>(channel),
                         static_cast<std::int8_t>(output), -1, 0, noTicks});
    }
    void read(const std::string& xml) { controls.read(TestSupport::parsed(xml)); }
    std::int32_t value(const Cell& cell) { return controls.map().find(cell)->value; }
    std::string written(bool allowReference = false) {
        std::ostringstream out;
        controls.write(out, 0, allowReference);
        return out.str();
    }

    TestSupport::RecordingQel qel;
    TestSupport::FakePlayer player;
    MidiEngine::MidiEngine engine{player};
    TemporaryFolder folder;
    std::vector<std::string> faults;
    std::function<void(const Platform::Fault&)> reportFault = [this](const Platform::Fault& fault) {
        faults.push_back(fault.reason);
    };
    int wakes = 0;
    bool wakeWorks = true;
    ControlSection controls{qel, engine, folder.path() / "Presets", reportFault, [this] {
                                ++wakes;
                                return wakeWorks;
                            }};
    std::deque<QelMidiMessage> wire;
};

TEST_F(ControlsOfAProgram, ValuesStayInTheRangeAndAreSent) {
    read(R"(<Controls>
        <Control cell="0,0" type="vfader" min="0" max="16383"><Function midiEvent="Pitch Bend"/></Control>
        <Control cell="0,1" type="knob" min="127" max="0"><Function midiEvent="Controller Change,7" output="1" channel="3"/></Control>
        <Control cell="0,2" type="edit" min="-10" max="300"><Function midiEvent="Program Change"/>
            <Function midiEvent="Channel Pressure"/></Control>
        <Control cell="0,3" type="label"><Function midiEvent="Controller Change,1"/></Control>
        <Control cell="0,4" value="5"><Function midiEvent="Controller Change,1"/></Control>
        <Control cell="0,5" type="knob"/>
        <Control cell="0,6" type="knob"><Function midiEvent="Start Song"/><Function midiEvent="Controller Change,2"/></Control>
        <Control cell="0,7" type="knob"><Function midiEvent="System Exclusive"/><Function/></Control>
    </Controls>)");
    struct Row {
        Cell cell;
        int set;
        int value;
        const char* sent;
    };
    const Row rows[] = {
        {{0, 0}, 16383, 16383, "E0 127 127"},
        {{0, 0}, 99999, 16383, "E0 127 127"},
        {{0, 0}, -1, 0, "E0 0 0"},
        {{0, 1}, 200, 127, "1 B3 7 127"}, // upside down
        {{0, 1}, -200, 0, "1 B3 7 0"},
        {{0, 2}, 301, 300, "C0 127, D0 127"},
        {{0, 2}, -11, -10, "C0 0, D0 0"},
        {{0, 3}, 9, 0, ""},
        {{0, 4}, 9, 5, ""},
        {{0, 5}, 9, 9, ""},
        {{0, 6}, 1, 1, "FA, B0 2 1"},
        {{0, 6}, 1, 1, "B0 2 1"}, // what has no number is sent when something changes
        {{0, 7}, 9, 9, ""},
    };
    for (const Row& row : rows) {
        controls.setValue(row.cell, row.set, Tell::nobody);
        EXPECT_EQ(value(row.cell), row.value) << row.cell.toXmlString() << ' ' << row.set;
        EXPECT_EQ(sent(), row.sent) << row.cell.toXmlString() << ' ' << row.set;
    }
    controls.setValue({9, 9}, 1, Tell::nobody);
    controls.release({9, 9});
    EXPECT_EQ(sent(), "");
    controls.send(which("all"));
    EXPECT_EQ(sent(), "E0 0 0, 1 B3 7 0, C0 0, D0 0, FA, B0 2 1");
}

TEST_F(ControlsOfAProgram, FunctionsAddressThem) {
    const auto change = [this](const char* cells, const char* by) {
        controls.change(which(cells), RelativeFixedValue(std::string_view(by)));
        return sent();
    };
    EXPECT_EQ(change("selected", "+1"), "");
    controls.select(which("up"));
    EXPECT_EQ(change("selected", "-1"), "E0 127 63");
    EXPECT_EQ(change("right", "+10"), "B0 1 10"); // a neighbour, which does not become the selected one
    EXPECT_EQ(change("selected", "64"), "E0 64 0");
    EXPECT_EQ(change("selected", ""), "E0 64 0");
    EXPECT_EQ(change("left", "1"), "");
    EXPECT_EQ(change("0,2", "-2000000000"), "B0 7 0");
    EXPECT_EQ(change("0,2", "+2147483647"), "B0 7 127");
    controls.send(which("2,3"));
    EXPECT_EQ(sent(), "B0 10 64");
    controls.select({{2, 3}, {0, 3}, {7, 7}});
    EXPECT_EQ(controls.selection(), (std::set<Cell>{{0, 3}, {2, 3}}));
    controls.send(which("selected"));
    EXPECT_EQ(sent(), "B0 64 0, B0 10 64");
    controls.setDefault();
    EXPECT_TRUE(controls.selection().empty());
}

TEST_F(ControlsOfAProgram, SpringBackWhenTheyAreLetGo) {
    controls.setValue({0, 0}, 0, Tell::nobody);
    controls.setValue({0, 1}, 99, Tell::nobody);
    EXPECT_EQ(sent(), "E0 0 0, B0 1 99");
    controls.release({0, 0});
    controls.release({0, 1});
    EXPECT_EQ(sent(), "E0 0 64");
    EXPECT_EQ(value({0, 0}), 8192);
    EXPECT_EQ(value({0, 1}), 99);
}

TEST_F(ControlsOfAProgram, SendThemselvesAtTheStartWhenTheyAreToldTo) {
    controls.sendAutomatically();
    EXPECT_EQ(sent(), "");
    read(R"(<Controls merge="true">
        <Control cell="5,0" type="knob" value="3" autoSend="true"><Function midiEvent="Controller Change,3"/></Control>
        <Control cell="1,9" type="knob" value="4" autoSend="true"><Function midiEvent="Start Song"/></Control>
        <Control cell="1,8" type="label" value="5" autoSend="true"><Function midiEvent="Controller Change,5"/></Control>
    </Controls>)");
    controls.sendAutomatically();
    EXPECT_EQ(sent(), "FA, B0 3 3");
}

TEST_F(ControlsOfAProgram, ProgramChangesFollowTheirBank) {
    controls.setValue({0, 7}, 5, Tell::nobody);
    EXPECT_EQ(sent(), "C0 5"); // no bank has been chosen
    controls.setValue({0, 5}, 3, Tell::nobody);
    EXPECT_EQ(sent(), "B0 0 3");
    controls.setValue({0, 7}, 6, Tell::nobody);
    EXPECT_EQ(sent(), "B0 0 3, C0 6");
    controls.setValue({0, 7}, 7, Tell::nobody);
    EXPECT_EQ(sent(), "C0 7");
    controls.setValue({0, 6}, 9, Tell::nobody);
    controls.setDefault(); // what was sent is known beyond the program
    EXPECT_EQ(sent(), "B0 32 9");
    controls.setValue({0, 7}, 8, Tell::nobody);
    EXPECT_EQ(sent(), "B0 0 3, B0 32 9, C0 8");
    pass(0xB0, 0, 44); // a bank chosen elsewhere moves the control and counts
    EXPECT_EQ(value({0, 5}), 44);
    controls.setValue({0, 7}, 8, Tell::nobody);
    EXPECT_EQ(sent(), "B0 0 44, B0 32 9, C0 8");
}

TEST_F(ControlsOfAProgram, FollowWhatPassesTheEngineWithoutSendingIt) {
    read(R"(<Controls>
        <Control cell="0,0" type="vfader" max="100"><Function midiEvent="Controller Change,7"/></Control>
        <Control cell="0,1" type="vfader"><Function midiEvent="Controller Change,7" channel="2"/></Control>
        <Control cell="0,2" type="vfader"><Function midiEvent="Controller Change,7" output="1"/></Control>
        <Control cell="0,3" type="label" value="9"><Function midiEvent="Controller Change,7"/></Control>
        <Control cell="0,4" type="edit"><Function midiEvent="Program Change"/><Function midiEvent="Note On,60"/></Control>
        <Control cell="0,5" type="edit" max="20000"><Function midiEvent="Pitch Bend"/></Control>
    </Controls>)");
    struct Row {
        int status, d1, d2, channel, output;
        std::vector<int> values;
    };
    const Row rows[] = {
        {0xB0, 7, 50, -1, -1, {50, 0, 0, 9, 0, 0}},
        {0xB0, 8, 51, -1, -1, {50, 0, 0, 9, 0, 0}}, // another controller
        {0xB0, 7, 52, 2, -1, {52, 52, 0, 9, 0, 0}},
        {0xB0, 7, 127, 3, 1, {100, 52, 127, 9, 0, 0}}, // within the range
        {0xB0, 7, 1, 2, 7, {100, 52, 127, 9, 0, 0}},   // no such output: it does not pass
        {0xC0, 33, 0, -1, -1, {100, 52, 127, 9, 33, 0}},
        {0x90, 60, 80, -1, -1, {100, 52, 127, 9, 33, 0}}, // notes are not followed
        {0xE0, 1, 64, -1, -1, {100, 52, 127, 9, 33, 8193}},
    };
    for (const Row& row : rows) {
        pass(row.status, row.d1, row.d2, row.channel, row.output);
        std::vector<int> values;
        for (int column = 0; column < 6; ++column) {
            values.push_back(value({0, column}));
        }
        EXPECT_EQ(values, row.values) << row.status << ' ' << row.d2;
    }
    EXPECT_EQ(sent(), "");
    controls.update({MidiEngine::MessageType::controllerChange, 7, 4, -1, -1, -1, -1, noTicks});
    EXPECT_EQ(value({0, 0}), 4);
    EXPECT_EQ(sent(), "");
}

// However messages of the controls and of others are mixed and delayed on their way: when all have passed, all controls
// that are bound to a controller stand where its last message put them.
TEST_F(ControlsOfAProgram, EndWhereTheLastMessageLeftThem) {
    RandomCases random;
    read(R"(<Controls>
        <Control cell="0,0" type="vfader"><Function midiEvent="Controller Change,7"/></Control>
        <Control cell="0,1" type="knob"><Function midiEvent="Controller Change,7"/></Control>
        <Control cell="0,2" type="edit"><Function midiEvent="Controller Change,7"/></Control>
    </Controls>)");
    int last = 0;
    const auto passOne = [&] {
        if (!wire.empty()) {
            last = wire.front().getD2();
            engine.playMidi(wire.front());
            wire.pop_front();
        }
    };
    for (int round = 0; round < 300; ++round) {
        for (int step = random.number(1, 12); step > 0; --step) {
            switch (random.number(0, 5)) {
            case 0:
            case 1:
                controls.setValue({0, random.number(0, 2)}, random.number(0, 127), Tell::nobody);
                break;
            case 2:
                wire.emplace_back(MidiEngine::MessageType::controllerChange, std::int8_t{7},
                                  random.number<std::int8_t>(0, 127), std::int8_t{-1}, std::int8_t{-1}, std::int8_t{-1},
                                  std::int8_t{0}, noTicks);
                break;
            case 3:
                controls.takeIn();
                break;
            default:
                passOne();
            }
        }
        while (!wire.empty()) {
            passOne();
        }
        for (int column = 0; column < 3; ++column) {
            ASSERT_EQ(value({0, column}), last) << "round " << round << ", column " << column;
        }
    }
}

// Steps that come faster than their messages pass are not taken back by them.
TEST_F(ControlsOfAProgram, DoNotFollowThemselves) {
    for (int i = 1; i <= 5; ++i) {
        controls.change(which("0,1"), RelativeFixedValue::relative(1));
        if (i % 2 == 0) {
            engine.playMidi(wire.front());
            wire.pop_front();
        }
        EXPECT_EQ(value({0, 1}), i);
    }
    letAllPass();
    EXPECT_EQ(value({0, 1}), 5);
    EXPECT_EQ(value({2, 1}), 5);
}

TEST_F(ControlsOfAProgram, AskOnceToBeToldOfWhatHasPassed) {
    pass(0xB0, 99, 1); // bound to nothing
    EXPECT_EQ(wakes, 0);
    for (int i = 0; i < 1000; ++i) {
        pass(0xB0, 1, i % 128);
        pass(0xB0, 7, i % 128);
    }
    EXPECT_EQ(wakes, 1);
    EXPECT_EQ(value({0, 1}), 999 % 128);
    EXPECT_EQ(value({2, 2}), 999 % 128);
    wakeWorks = false; // no room for the question: it is asked again, and nothing is lost
    pass(0xB0, 1, 5);
    pass(0xB0, 7, 6);
    EXPECT_EQ(wakes, 3);
    EXPECT_EQ(value({0, 1}), 5);
    EXPECT_EQ(value({0, 2}), 6);
    read("<Controls/>"); // nobody follows where there is no control
    pass(0xB0, 1, 7);
    EXPECT_EQ(wakes, 3);
}

// What has passed before a change of the section belongs to the controls before it.
TEST_F(ControlsOfAProgram, TakeInWhatPassedBeforeTheyChange) {
    pass(0xB0, 1, 77);
    controls.put({Control{{0, 2}, "new"}});
    EXPECT_EQ(value({0, 1}), 77);
    EXPECT_EQ(controls.map().find({0, 2})->name, "new");
    pass(0xB0, 7, 3);
    EXPECT_EQ(value({0, 2}), 0);
    EXPECT_EQ(value({2, 2}), 3);
    pass(0xB0, 1, 78);
    controls.setDefault();
    EXPECT_EQ(value({0, 1}), 0);
}

TEST_F(ControlsOfAProgram, StandForTheirPreset) {
    const auto names = [this] {
        std::string text;
        for (const auto& [cell, control] : controls.map()) {
            text += cell.toXmlString() + control.name + " ";
        }
        return text;
    };
    read(R"(<Controls><Control cell="0,0" name="a" type="knob"/></Controls>)");
    controls.savePreset("mine", {});
    EXPECT_EQ(written(true), "<Controls preset=\"mine\" merge=\"false\">\n</Controls>\n");
    controls.setValue({0, 0}, 5, Tell::nobody);
    EXPECT_NE(written(true).find("value=\"5\""), std::string::npos);
    EXPECT_EQ(written(true).find("mine"), std::string::npos);
    controls.setDefault();
    read(R"(<Controls preset="mine"/>)");
    EXPECT_EQ(names(), "0,0a ");
    controls.setDefault();
    read(R"(<Controls preset="mine" merge="true"><Control cell="0,1" name="b"/></Controls>)");
    EXPECT_EQ(controls.map().size(), 13U);
    EXPECT_EQ(names().substr(0, 10), "0,0a 0,1b ");
    read(R"(<Controls preset="gone"/>)"); // the built-in ones stand in
    EXPECT_EQ(controls.map().size(), 13U);
    EXPECT_EQ(written(true), "<Controls preset=\"gone\" merge=\"false\">\n</Controls>\n");
    controls.setValue({0, 1}, 5, Tell::nobody); // not what the preset stands for
    EXPECT_NE(written(true).find("value=\"5\""), std::string::npos);
    read(R"(<Controls preset="gone"/>)");
    pass(0xB0, 1, 6);
    EXPECT_NE(written(true).find("value=\"6\""), std::string::npos);
    read(R"(<Controls preset="gone"/>)");
    controls.put({Control{{9, 9}}});
    EXPECT_NE(written(true).find("\"9,9\""), std::string::npos);

    controls.loadPreset("mine");
    EXPECT_EQ(names(), "0,0a ");
    EXPECT_TRUE(faults.empty());
    controls.loadPreset("gone");
    EXPECT_EQ(faults.size(), 1U);
    EXPECT_EQ(names(), "0,0a ");
    controls.loadPreset("000 - Default");
    EXPECT_EQ(controls.map().size(), 13U);
    controls.savePreset("few", {{0, 1}, {2, 3}});
    controls.loadPreset("mine");
    controls.loadPreset("few");
    EXPECT_EQ(names(), "0,0a 0,1MW 2,3PAN ");
    controls.storePreset("other", defaultControls());
    controls.loadPreset("other");
    EXPECT_EQ(controls.map().size(), 13U);
    controls.deletePreset("other");
    controls.loadPreset("other");
    EXPECT_EQ(faults.size(), 2U);
}

} // namespace
