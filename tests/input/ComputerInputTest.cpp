#include "core/MessageManagerMaster.h"
#include "input/ComputerInputMessageManager.h"
#include "input/ComputerInputSection.h"
#include "input/ComputerInputXml.h"
#include "input/DefaultKeys.h"
#include "support/ParsedXml.h"
#include "support/RecordingQel.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

using namespace Backend::ComputerInput;
using TestSupport::parsed;
using TestSupport::RecordingQel;

namespace {

// A key that sends one controller with these values down and up.
std::string key(const std::string& id, int down, int up = -1, const std::string& more = {}) {
    const auto half = [](const std::string& name, int value) {
        return value < 0 ? std::string()
                         : "<" + name + "><MidiControllerChange controller=\"1\" value=\"" + std::to_string(value) +
                               "\"/></" + name + ">";
    };
    return "<Key id=\"" + id + "\"><Function " + more + ">" + half("Down", down) + half("Up", up) + "</Function></Key>";
}

std::string section(const std::string& keys, const std::string& attributes = {}) {
    return "<ComputerInput " + attributes + ">" + keys + "</ComputerInput>";
}

class ComputerInput : public testing::Test {
protected:
    // The values of the controllers that were sent since the last call; other calls as they are.
    std::string sent() {
        std::string text;
        for (const std::string& call : qel.takeCalls()) {
            const std::string prefix = "playMidi(176 1 ";
            const bool isController = call.starts_with(prefix);
            text += (text.empty() ? "" : " ") +
                    (isController ? call.substr(prefix.size(), call.find(' ', prefix.size()) - prefix.size()) : call);
        }
        return text;
    }
    void read(const std::string& xml) { keys.read(parsed(xml)); }
    std::string written(bool allowReference = false) const {
        std::ostringstream out;
        keys.write(out, 0, allowReference);
        return out.str();
    }
    std::string pressed(const std::string& name) {
        keys.keyDown(Key(std::string_view(name)), false);
        keys.keyUp(Key(std::string_view(name)));
        return sent();
    }
    void writePreset(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories(presetFolder());
        std::ofstream(presetFolder() / (name + ".pst"), std::ios::binary) << content;
    }
    [[nodiscard]] std::filesystem::path presetFolder() const { return folder.path() / "Presets"; }

    RecordingQel qel;
    TemporaryFolder folder;
    std::vector<std::string> faults;
    std::function<void(const Platform::Fault&)> reportFault = [this](const Platform::Fault& fault) {
        faults.push_back(fault.reason);
    };
    ComputerInputSection keys{qel, presetFolder(), reportFault};
};

TEST_F(ComputerInput, StartsAsTheBuiltInKeyboard) {
    EXPECT_EQ(keys.map().size(), 75U);
    EXPECT_NE(keys.map().find(Key()), nullptr);
    ASSERT_NE(keys.map().find(Key("1")), nullptr);
    EXPECT_TRUE(keys.map().find(Key("1"))->entries.empty());
    std::vector<Platform::Fault> faultsOfDefault;
    checkElement(defaultComputerInput(), computerInputFormat(), "default", faultsOfDefault);
    EXPECT_TRUE(faultsOfDefault.empty());
    for (const auto& [id, configuration] : keys.map()) {
        EXPECT_EQ(id, configuration.key);
        EXPECT_NE(id.getCode(), Key::UNKNOWN_CODE);
        EXPECT_TRUE(configuration.global);
        for (const FunctionEntry& entry : configuration.entries) {
            EXPECT_FALSE(entry.isIdle()) << id.getName();
        }
    }
    // Each note ends as itself; between them the rows have no gap.
    for (const auto& [zone, range] : {std::pair{0, std::pair{60, 79}}, {1, {48, 64}}}) {
        for (int note = range.first; note <= range.second; ++note) {
            int count = 0;
            for (const auto& [id, configuration] : keys.map()) {
                for (const FunctionEntry& entry : configuration.entries) {
                    const auto event = entry.down ? entry.down->getMidiEvent() : Backend::MidiEventIdentity{};
                    if (event.isNoteOn() && event.zone == zone && event.number == note) {
                        ++count;
                        EXPECT_TRUE(entry.up && entry.up->getMidiEvent().isNoteOff() &&
                                    entry.up->getMidiEvent().isSamePlace(event));
                    }
                }
            }
            EXPECT_EQ(count, 1) << zone << ' ' << note;
        }
    }
    const struct {
        const char* name;
        const char* calls;
    } rows[] = {
        {"Page Up", "changeControl(selected, +1)"},
        {"Control Delete", "changeControl(selected, 64)"},
        {"Backspace", "changeControl(selected, 127) changeControl(selected, 0)"},
        {"Control Left", "moveWindow(-10, )"},
        {"Shift F1", "changeZoneTranspose(selected, -1)"},
        {"F3", "selectZone(down)"},
        {"Up", "selectControl(up)"},
        {"Numpad -", "resetQel()"},
        {"Numpad Enter", "showZone(toggle)"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(pressed(row.name), row.calls) << row.name;
    }
    for (const char* name : {"Left", "Page Down", "Home", "Control Up"}) {
        keys.keyDown(Key(std::string_view(name)), false);
        static_cast<void>(sent());
        keys.keyDown(Key(std::string_view(name)), true);
        EXPECT_NE(sent(), "") << name;
    }
}

TEST_F(ComputerInput, ReadsSectionsAsTheyAre) {
    read(section(key("Q", 1, 2) + key("W", 3, -1, "keepSending=\"true\"") + "<Key id=\"1\"/>" +
                     "<Key id=\"Nonsense\"/><Strange/>" +
                     "<Key id=\"E\" global=\"false\"><Function><Down><Strange/></Down><Up/></Function></Key>" +
                     key("Q", 4, 5),
                 "useKeyUpMod=\"true\""));
    EXPECT_TRUE(keys.map().useKeyUpMod);
    EXPECT_EQ(keys.map().size(), 5U);
    EXPECT_EQ(pressed("Q"), "4 5");
    EXPECT_EQ(pressed("W"), "3");
    EXPECT_EQ(pressed("E"), "");
    EXPECT_EQ(pressed("Nonsense"), "");
    EXPECT_FALSE(keys.map().find(Key("E"))->global);
    EXPECT_TRUE(keys.map().find(Key("E"))->entries.front().isIdle());

    keys.read(parsed("<Other/>")); // ignored
    EXPECT_EQ(keys.map().size(), 5U);
    read(section(key("Q", 6), "merge=\"true\""));
    EXPECT_EQ(keys.map().size(), 5U);
    EXPECT_EQ(pressed("Q"), "6");
    EXPECT_FALSE(keys.map().useKeyUpMod);
    read(section(key("R", 7), "merge=\"true\""));
    EXPECT_EQ(keys.map().size(), 6U);
    read(section(key("R", 7)));
    EXPECT_EQ(keys.map().size(), 1U);
    read(section(""));
    EXPECT_EQ(keys.map().size(), 0U);
}

TEST_F(ComputerInput, WritesWhatItReads) {
    const std::string text = written();
    read(text);
    EXPECT_EQ(written(), text);
    read(section("<Key id=\"Shift Control Alt Win F1\" global=\"false\"/>" + key("Numpad *", 1, 2)));
    std::ostringstream deep;
    keys.write(deep, 1, false);
    EXPECT_EQ(deep.str(), "\t<ComputerInput merge=\"false\" useKeyUpMod=\"false\">\n"
                          "\t\t<Key id=\"Shift Control Alt Win F1\" global=\"false\">\n"
                          "\t\t</Key>\n"
                          "\t\t<Key id=\"Numpad *\" global=\"true\">\n"
                          "\t\t\t<Function keepSending=\"false\">\n"
                          "\t\t\t\t<Down>\n"
                          "\t\t\t\t\t<MidiControllerChange controller=\"1\" value=\"1\"/>\n"
                          "\t\t\t\t</Down>\n"
                          "\t\t\t\t<Up>\n"
                          "\t\t\t\t\t<MidiControllerChange controller=\"1\" value=\"2\"/>\n"
                          "\t\t\t\t</Up>\n"
                          "\t\t\t</Function>\n"
                          "\t\t</Key>\n"
                          "\t</ComputerInput>\n");
}

TEST_F(ComputerInput, KnowsItsPresetFromChanges) {
    read(section(key("Q", 1) + "<Key id=\"1\"/>", "useKeyUpMod=\"true\""));
    keys.savePreset("Ü & co", {});
    EXPECT_EQ(keys.map().presetName, "Ü & co");
    const std::string reference = "<ComputerInput preset=\"Ü &amp; co\" merge=\"false\" useKeyUpMod=\"true\">\n"
                                  "</ComputerInput>\n";
    EXPECT_EQ(written(true), reference);
    EXPECT_EQ(written(false).find("preset"), std::string::npos);

    keys.put({{Key("2")}}); // does nothing, so it is no change
    EXPECT_EQ(written(true), reference);
    keys.setUseKeyUpMod(false);
    EXPECT_NE(written(true).find("<Key"), std::string::npos);
    keys.setUseKeyUpMod(true);
    keys.put({keys.map().begin()->second, {Key("W"), keys.map().begin()->second.entries}});
    EXPECT_NE(written(true).find("<Key"), std::string::npos);

    // The reference alone gives the section back.
    keys.setDefault();
    read(reference);
    EXPECT_EQ(keys.map().size(), 2U);
    EXPECT_TRUE(keys.map().useKeyUpMod);
    EXPECT_EQ(written(true), reference);

    // Without its file it stands for the fallback, and keeps its name until a key changes.
    keys.deletePreset("Ü & co");
    read(reference);
    EXPECT_EQ(keys.map().size(), 75U);
    EXPECT_NE(written(true).find("preset=\"Ü &amp; co\""), std::string::npos);
    keys.put({{Key("W")}});
    EXPECT_NE(written(true).find("<Key"), std::string::npos);
    read(section(key("Q", 9), "preset=\"none\""));
    EXPECT_EQ(keys.map().size(), 75U);
    EXPECT_EQ(pressed("Q"), "9");
    EXPECT_NE(written(true).find("<Key"), std::string::npos);
    EXPECT_TRUE(faults.empty());
}

TEST_F(ComputerInput, SavesAndMergesSomeKeys) {
    read(section(key("Q", 1) + key("W", 2) + key("E", 3)));
    keys.savePreset("two", {Key("E"), Key("Q"), Key("F12")});
    EXPECT_EQ(keys.map().presetName, "");
    read(section(key("Q", 8) + key("R", 9)));
    keys.loadPreset("two");
    EXPECT_EQ(keys.map().presetName, "two");
    EXPECT_EQ(keys.map().size(), 3U);
    EXPECT_EQ(pressed("Q") + pressed("E") + pressed("R"), "139");
}

TEST_F(ComputerInput, ReportsPresetsThatCannotBeRead) {
    read(section(key("Q", 1)));
    writePreset("broken", "<ComputerInput>");
    writePreset("other", "<Layers/>");
    std::ofstream(folder.path() / "outside.pst") << "<ComputerInput/>";
    for (const char* name : {"", "none", "broken", "other", "../outside", "a\\b", "a:b", "\n"}) {
        keys.loadPreset(name);
        EXPECT_EQ(faults.size(), 1U) << name;
        keys.savePreset("../escape", {});
        EXPECT_EQ(faults.size(), 2U) << name;
        keys.deletePreset(name);
        faults.clear();
    }
    EXPECT_EQ(pressed("Q"), "1");
    EXPECT_EQ(keys.map().presetName, "");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "escape.pst"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "outside.pst"));

    keys.loadPreset("000 - Default"); // needs no file
    EXPECT_EQ(keys.map().size(), 75U);
    writePreset("000 - Default", section(key("Q", 3)));
    keys.loadPreset("000 - Default");
    EXPECT_EQ(keys.map().size(), 1U);
    EXPECT_TRUE(faults.empty());
}

std::string note(const std::string& id, int number, const std::string& more = {}) {
    const std::string data = more + " note=\"" + Note(number).getName() + "\" velocity=\"1\"/>";
    return "<Key id=\"" + id + "\"><Function><Down><MidiNoteOn " + data + "</Down><Up><MidiNoteOff " + data +
           "</Up></Function></Key>";
}

// Controllers by their value, notes as "on60" and "off60".
TEST_F(ComputerInput, KeysGoDownAndUp) {
    const std::string modifiers = key("Q", 1, 2) + key("Shift Q", 3, 4);
    const std::string sending = key("Q", 1, 2, "keepSending=\"true\"");
    const std::string noteOfShift = note("Shift Q", 60) + key("Q", -1, 2);
    const std::string twoNotes = note("Q", 60) + note("Shift Q", 62);
    const std::string shared =
        note("Q", 60, "channel=\"1\"") + note("W", 60, "channel=\"1\"") + note("E", 60, "channel=\"2\"");
    const std::string rolling = "<Key id=\"Q\"><Function keepSending=\"true\"><Down><MidiNoteOn note=\"C4\"/></Down>"
                                "<Up><MidiNoteOff note=\"C4\"/></Up></Function></Key>";
    const std::string drone = "<Key id=\"Q\"><Function><Down><MidiNoteOn note=\"C4\"/></Down></Function></Key>";
    const struct {
        const char* name;
        const std::string& keys;
        const char* attributes;
        std::vector<std::string> steps; // "+Key" down, "~Key" repeat, "-Key" up
        const char* sent;
    } rows[] = {
        {"once", modifiers, "", {"+Q", "~Q", "~Q", "-Q"}, "1 2"},
        {"down again is a repeat", modifiers, "", {"+Q", "+Q", "-Q", "+Q"}, "1 2 1"},
        {"keeps sending", sending, "", {"+Q", "~Q", "+Q", "-Q"}, "1 1 1 2"},
        {"up without down", modifiers, "", {"-Q", "-Shift Q", "-W"}, "2 2"},
        {"repeat without down", sending, "", {"~Q", "-Q"}, "1 2"},
        {"modifiers at the release do not count", modifiers, "", {"+Q", "-Shift Q", "+Shift Q", "-Shift Q"}, "1 2 3 2"},
        {"modifiers at the release count",
         modifiers,
         "useKeyUpMod=\"true\"",
         {"+Q", "-Shift Q", "+Shift Q", "-Shift Q", "+Shift Q", "-Q"},
         "1 4 3 4 3 2"},
        {"another modifier is another press", modifiers, "", {"+Q", "+Shift Q", "~Shift Q", "-Q"}, "1 3 2"},
        {"a note ends when no other does", noteOfShift, "", {"+Shift Q", "-Shift Q"}, "on60 2 off60"},
        {"also with modifiers at the release",
         noteOfShift,
         "useKeyUpMod=\"true\"",
         {"+Shift Q", "-Q", "+Shift Q", "-Shift Q"},
         "on60 2 off60 on60 off60"},
        {"the key's own note ends too", twoNotes, "", {"+Shift Q", "-Shift Q"}, "on62 off60 off62"},
        {"a rolling note ends as often as it began",
         rolling,
         "",
         {"+Q", "~Q", "~Q", "-Q", "-Q"},
         "on60 on60 on60 off60 off60 off60 off60"},
        {"a note without an end of its own sounds on", drone, "", {"+Q", "-Q"}, "on60"},
        {"the last of two keys ends the note",
         shared,
         "",
         {"+Q", "+W", "+E", "-E", "-Q", "-W", "-W"},
         "on60 on60 on60 off60 off60 off60 off60"},
        {"so also the first", shared, "", {"+Q", "+W", "-W", "+W", "-Q", "-W"}, "on60 on60 on60 off60 off60 off60"},
    };
    for (const auto& row : rows) {
        read(section(row.keys, row.attributes));
        std::string all;
        for (const std::string& step : row.steps) {
            const Key moved(std::string_view(step).substr(1));
            step[0] == '-' ? keys.keyUp(moved) : keys.keyDown(moved, step[0] == '~');
        }
        std::istringstream calls(sent());
        for (std::string word; calls >> word;) {
            if (word.starts_with("playMidi(")) {
                const std::string type = word.substr(word.find('(') + 1);
                std::string number;
                std::string rest;
                calls >> number;
                for (int i = 0; i < 9; ++i) {
                    calls >> rest;
                }
                word = (type == "144" ? "on" : "off") + number;
            }
            all += (all.empty() ? "" : " ") + word;
        }
        EXPECT_EQ(all, row.sent) << row.name;
        for (const std::string& step : row.steps) { // nothing stays down for the next row
            keys.keyUp(Key(std::string_view(step).substr(1)));
        }
        static_cast<void>(sent());
    }
}

TEST_F(ComputerInput, HeldKeysKeepWhatTheyWentDownWith) {
    read(section(key("Q", 1, 2, "keepSending=\"true\"")));
    const Key q("Q");
    keys.keyDown(q, false);
    read(section(key("Q", 3, 4, "keepSending=\"true\"") + key("W", 5, 6)));
    keys.keyDown(q, true);
    EXPECT_EQ(pressed("W"), "1 1 5 6");
    keys.keyUp(q);
    EXPECT_EQ(pressed("Q"), "2 3 4");

    keys.keyDown(q, false);
    read(section(""));
    keys.keyUp(q);
    EXPECT_EQ(sent(), "3 4");
}

TEST_F(ComputerInput, DoesWhatIsPosted) {
    Backend::MessageManagerMaster master("test");
    ComputerInputMessageManager manager(keys, qel, master);
    master.addMessageManager(manager);
    EXPECT_FALSE(manager.wantMessage(33468));
    EXPECT_TRUE(manager.wantMessage(33469) && manager.wantMessage(33476));
    EXPECT_FALSE(manager.wantMessage(33477));
    read(section(key("Shift Win Q", 1, -1, "keepSending=\"true\"") + key("Q", -1, 2)));
    KeyConfigurationMap other = keys.map();
    KeyConfiguration w = *other.find(Key("Q"));
    w.key = Key("W");
    master.start();
    const Key q("Shift Win Q");
    manager.postKeyDown(q, false);
    manager.postKeyDown(q, true);
    manager.postKeyUp(q);
    manager.postKeyDown(Key(), false);
    manager.postKeyDown(Key("Nonsense"), false);
    manager.postPut({w});
    manager.postSetUseKeyUpMod(true);
    manager.postSavePreset("one", {Key("W")});
    manager.postKeyUp(Key("W"));
    manager.postSet(other);
    manager.postKeyUp(Key("W"));
    manager.postStorePreset("all", other);
    manager.postStorePreset("gone", other);
    manager.postDeletePreset("gone");
    master.stop();
    EXPECT_EQ(sent(), "1 1 2 2");
    EXPECT_EQ(keys.map().size(), 2U);
    keys.loadPreset("one");
    EXPECT_EQ(keys.map().size(), 3U);
    EXPECT_TRUE(keys.map().useKeyUpMod);
    keys.loadPreset("all");
    EXPECT_EQ(keys.map().size(), 2U);
    keys.loadPreset("gone");
    EXPECT_EQ(faults.size(), 1U);
}

} // namespace
