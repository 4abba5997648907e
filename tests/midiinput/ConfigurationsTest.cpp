#include "core/MessageParameters.h"
#include "midiinput/ConfigurationSection.h"
#include "midiinput/MidiInputXml.h"
#include "midiinput/StartedNotes.h"
#include "support/ParsedXml.h"
#include "support/RandomCases.h"
#include "support/RecordingQel.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <utility>

using namespace Backend::MidiInput;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using Backend::MidiEngine::QelMidiMessage;
using TestSupport::RecordingQel;

namespace {

MidiEvent event(int input, int channel, std::string_view text) {
    return {static_cast<std::uint8_t>(input), static_cast<std::uint8_t>(channel), MidiMessage(text)};
}

QelMidiMessage message(int status, int d1, int d2 = 64, int input = 0) {
    return {static_cast<MessageType>(status),
            static_cast<std::int8_t>(d1),
            static_cast<std::int8_t>(d2),
            static_cast<std::int8_t>(status & 15),
            -1,
            -1,
            static_cast<std::int8_t>(input),
            Backend::noTicks};
}

MidiEventConfigurationMap mapOf(const std::string& events, MidiEventConfigurationMap map = {}) {
    readMidiInput(TestSupport::parsed(events), map);
    return map;
}

std::string section(const std::string& content, const std::string& merge = "false") {
    return "<MidiInput merge=\"" + merge + "\">" + content + "</MidiInput>";
}

// One configuration that sends the program number `number`.
std::string sending(const std::string& which, int number) {
    return "<MidiEvent " + which + "><Translation condition=\"Off\"><MidiProgramChange d1=\"" + std::to_string(number) +
           "\" d2=\"\"/></Translation></MidiEvent>";
}

std::string written(const MidiEventConfigurationMap& map) {
    std::ostringstream out;
    writeMidiInput(out, 0, map);
    return out.str();
}

TEST(MidiEvents, ArePackedWithTheNumbersOfNotesAndControllers) {
    EXPECT_EQ(event(1, 2, "Note On,60").getPacked(), 0x0102903CU);
    EXPECT_EQ(event(255, 255, "Note Off,60").getPacked(), 0xFFFF803CU);
    EXPECT_EQ(event(0, 255, "Controller Change,7").getPacked(), 0x00FFB007U);
    for (const char* whole : {"Key Pressure", "Program Change", "Channel Pressure", "Pitch Bend", "Song Select"}) {
        const MidiEvent one = event(3, 4, std::string(whole) + ",1");
        EXPECT_EQ(one, event(3, 4, std::string(whole) + ",2")) << whole;
        EXPECT_EQ(one.getPacked() & 0xFF, 0U) << whole;
    }
    EXPECT_TRUE(event(255, 0, "Note On,1") < event(0, 0, "Note On,1")); // as signed numbers
    EXPECT_FALSE(event(0, 0, "Note On,1") < event(0, 0, "Note On,1"));
}

// Every subset of the four, for messages that all four could be for.
TEST(MidiInput, TakesTheNearestConfiguration) {
    const std::string which[] = {R"(input="1" channel="2")", R"(input="1" channel="255")", R"(input="255" channel="2")",
                                 R"(input="255" channel="255")"};
    for (unsigned subset = 0; subset < 16; ++subset) {
        std::string content = sending(R"(input="0" channel="2" midiEvent="Note On,60")", 9) +
                              sending(R"(input="1" channel="3" midiEvent="Note On,60")", 9) +
                              sending(R"(input="1" channel="2" midiEvent="Note On,61")", 9);
        int expected = 4;
        for (int i = 3; i >= 0; --i) {
            if ((subset >> i & 1) != 0) {
                content += sending(which[i] + R"( midiEvent="Note On,60")", i);
                expected = i;
            }
        }
        const MidiEventConfigurationMap map = mapOf(section(content));
        const LookUp found = map.lookUp(message(0x92, 60, 64, 1));
        EXPECT_EQ(static_cast<int>(found.found), expected) << subset;
        EXPECT_EQ(found.configuration == nullptr, expected == 4) << subset;
    }
}

TEST(MidiInput, ReadsAndMerges) {
    const auto first = sending(R"(midiEvent="Note On,60")", 1);
    const auto second = sending(R"(midiEvent="Note On,61")", 2);
    const auto again = sending(R"(midiEvent="Note On,60")", 3);
    EXPECT_EQ(mapOf(section(first + second + again)).size(), 2U);
    const MidiEventConfigurationMap map = mapOf(section(first + second));
    EXPECT_EQ(mapOf(section(again), map).size(), 1U);
    EXPECT_EQ(mapOf("<MidiInput/>", map).size(), 0U);
    EXPECT_EQ(mapOf("<Layers/>", map).size(), 2U);
    const MidiEventConfigurationMap merged = mapOf(section(again + "<Other/>", "true"), map);
    EXPECT_EQ(merged.size(), 2U);
    EXPECT_EQ(written(merged), written(mapOf(section(again + second))));
    // What could not be read keeps its place; all else is read.
    const MidiEventConfigurationMap nulls = mapOf(section(
        R"(<MidiEvent input="999" channel="-1" midiEvent="No Event"><Any/><Any><ResetQel/></Any><T><X/></T></MidiEvent>)"));
    const MidiEventConfiguration& only = nulls.begin()->second;
    ASSERT_EQ(only.translations.size(), 3U);
    EXPECT_TRUE(!only.translations[0] && only.translations[1] && !only.translations[2]);
    EXPECT_EQ(only.event.input, 255);
    EXPECT_EQ(only.event.channel, 0);
    EXPECT_FALSE(only.isDefault());
    EXPECT_EQ(MidiEventConfiguration(only).translations.size(), 3U);
    EXPECT_EQ(mapOf(written(nulls)).begin()->second.translations.size(), 3U); // still swallows its messages
}

constexpr const char* unchanged = R"(<Translation><Unchanged d1="D1" d2="D2"/></Translation>)";
constexpr const char* nothing = R"(<Translation><DoNothing/></Translation>)";

TEST(MidiInput, LeavesOutWhatIsNotWorthSaving) {
    const std::pair<std::string, bool> rows[] = {
        {"", true},
        {unchanged, true},
        {std::string(unchanged) + nothing, true},
        {std::string(nothing) + unchanged, false},
        {std::string(unchanged) + unchanged, false},
        {std::string(unchanged) + nothing + nothing, false},
        {nothing, false},
        {"<Translation><X/></Translation>", false},
        {std::string(unchanged) + "<Translation><X/></Translation>", false},
        {R"(<Translation><Unchanged channel="1" d1="D1" d2="D2"/></Translation>)", false},
    };
    for (const auto& [translations, isDefault] : rows) {
        const auto map = mapOf(section("<MidiEvent midiEvent=\"Pitch Bend\">" + translations + "</MidiEvent>"));
        EXPECT_EQ(map.begin()->second.isDefault(), isDefault) << translations;
        EXPECT_EQ(written(map) == "<MidiInput merge=\"false\">\n</MidiInput>\n", isDefault) << translations;
    }
}

TEST(MidiInput, IsWrittenLineByLine) {
    const auto map = mapOf(section(
        R"(<MidiEvent input="0" channel="255" midiEvent="Note On,60"><Translation condition="D2 gt 0"><MidiNoteOn zone="1" d1="D1 +12" d2="D2"/></Translation></MidiEvent>)"
        R"(<MidiEvent midiEvent="Pitch Bend"><Translation><Unchanged d1="D1" d2="D2"/></Translation></MidiEvent>)"));
    std::ostringstream whole;
    writeMidiInput(whole, 1, map);
    EXPECT_EQ(whole.str(), "\t<MidiInput merge=\"false\">\n"
                           "\t\t<MidiEvent input=\"0\" channel=\"255\" midiEvent=\"Note On,60\">\n"
                           "\t\t\t<Translation condition=\"D2 gt 0\">\n"
                           "\t\t\t\t<MidiNoteOn zone=\"1\" d1=\"D1 +12\" d2=\"D2\"/>\n"
                           "\t\t\t</Translation>\n"
                           "\t\t</MidiEvent>\n"
                           "\t</MidiInput>\n");
    std::ostringstream selected;
    writeMidiInput(selected, 0, map, {event(255, 255, "Pitch Bend"), event(7, 1, "Controller Change,64")});
    EXPECT_EQ(selected.str(), "<MidiInput merge=\"true\">\n"
                              "\t<MidiEvent input=\"255\" channel=\"255\" midiEvent=\"Pitch Bend\">\n"
                              "\t\t<Translation condition=\"Off\">\n"
                              "\t\t\t<Unchanged d1=\"D1\" d2=\"D2\"/>\n"
                              "\t\t</Translation>\n"
                              "\t</MidiEvent>\n"
                              "\t<MidiEvent input=\"7\" channel=\"1\" midiEvent=\"Controller Change,64\">\n"
                              "\t</MidiEvent>\n"
                              "</MidiInput>\n");
    std::vector<Platform::Fault> faults;
    for (const std::string& text : {whole.str(), selected.str()}) {
        checkElement(TestSupport::parsed(text), midiInputFormat(), "test", faults);
    }
    EXPECT_TRUE(faults.empty()) << faults.front().text();
}

// Each attribute that cannot be read is a fault with its line.
TEST(MidiInput, IsChecked) {
    const auto xml = section(R"(<MidiEvent input="256" midiEvent="Note On,200"><Translation condition="D2 > 1">)"
                             R"(<MidiNoteOn d1="D1+12" d2="D2 x" channel="16"/></Translation>)"
                             R"(<Translation condition="D1 eq 1"><SelectZone type="sideways"/></Translation>)"
                             R"(<Translation><SelectZone type="D2 -4"/></Translation></MidiEvent>)");
    std::vector<Platform::Fault> faults;
    checkElement(TestSupport::parsed(xml), midiInputFormat(), "test", faults);
    EXPECT_EQ(faults.size(), 7U);
}

class ConfigurationSections : public testing::Test {
protected:
    ConfigurationSections() {
        qel.window = Platform::createWindowEndpoint([this](const Platform::ThreadMessage& posted) { receive(posted); });
    }
    ~ConfigurationSections() override {
        static_cast<void>(whatWindowSaw()); // what is still on its way carries copies
        Platform::destroyWindowEndpoint(qel.window);
    }

    void receive(const Platform::ThreadMessage& posted) {
        told += std::to_string(posted.id - Platform::applicationMessage);
        if (posted.id == midiInputLoadedMessage) {
            told += ":" + std::to_string(Backend::takeCopy<MidiEventConfigurationMap>(posted.wParam)->size());
        } else if (posted.id == midiEventsPutMessage) {
            told += ":" + std::to_string(Backend::takeCopy<std::vector<MidiEventConfiguration>>(posted.wParam)->size());
        }
        if (posted.id == midiEventsRemovedMessage) {
            told += ":" + std::to_string(Backend::takeCopy<std::vector<MidiEvent>>(posted.wParam)->size());
        }
        told += " ";
    }
    // What the window was told since the last call.
    std::string whatWindowSaw() {
        EXPECT_TRUE(Platform::dispatchWindowMessages());
        return std::exchange(told, {});
    }
    [[nodiscard]] std::string presetFile(const std::string& name) const {
        std::ifstream file(folder.path() / "presets" / (name + ".pst"), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    TemporaryFolder folder;
    RecordingQel qel;
    std::string told;
    std::vector<std::string> faults;
    std::function<void(const Platform::Fault&)> report = [this](const Platform::Fault& fault) {
        faults.push_back(fault.reason);
    };
    ConfigurationSection sections{qel, folder.path() / "presets", report};
};

TEST_F(ConfigurationSections, ArePresetsByName) {
    sections.set(mapOf(section(sending(R"(midiEvent="Note On,60")", 1) + sending(R"(midiEvent="Note On,61")", 2))));
    sections.savePreset("All", {});
    sections.savePreset("One", {event(255, 255, "Note On,61"), event(255, 255, "Pitch Bend")});
    EXPECT_EQ(presetFile("All"), "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n" + written(*sections.map()));
    EXPECT_EQ(whatWindowSaw(), "952:2 ");
    sections.setDefault();
    sections.loadPreset("One");
    EXPECT_EQ(sections.map()->size(), 2U); // one of them empty
    sections.loadPreset("All");
    EXPECT_EQ(whatWindowSaw(), "952:0 952:2 953 952:2 953 ");
    const auto before = sections.map();
    sections.loadPreset("None");
    EXPECT_EQ(faults.size(), 1U);
    EXPECT_EQ(sections.map(), before);
    sections.loadPreset("000 - Default");
    EXPECT_TRUE(sections.map()->empty());
    EXPECT_EQ(before->size(), 2U); // who had it keeps it
    sections.deletePreset("All");
    EXPECT_EQ(presetFile("All"), "");
}

TEST_F(ConfigurationSections, TakeWhatTheWindowPuts) {
    std::vector<MidiEventConfiguration> list;
    for (const auto& [id, configuration] :
         mapOf(section(sending(R"(midiEvent="Note On,60")", 5) + sending(R"(midiEvent="Note On,62")", 6)))) {
        list.push_back(configuration);
    }
    sections.set(mapOf(section(sending(R"(midiEvent="Note On,60")", 1))));
    sections.put(list);
    EXPECT_EQ(whatWindowSaw(), "952:1 951:2 ");
    EXPECT_EQ(sections.map()->size(), 2U);
    sections.map()->lookUp(message(0x90, 60)).configuration->translations[0]->execute(message(0x90, 60));
    const auto calls = qel.takeCalls();
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].substr(0, 16), "playMidi(192 5 0");
    sections.remove({event(255, 255, "Note On,60"), event(0, 0, "Note On,62")});
    EXPECT_EQ(whatWindowSaw(), "956:2 ");
    EXPECT_EQ(sections.map()->lookUp(message(0x90, 60)).found, Found::nothing);
    EXPECT_EQ(sections.map()->size(), 1U) << "only the very event, not one that it is a case of";
}

// A program that names a preset means what the preset holds; it is written as that name only when asked to.
TEST_F(ConfigurationSections, StandForTheirPreset) {
    sections.set(mapOf(section(sending(R"(midiEvent="Note On,60")", 1))));
    sections.savePreset("P", {});
    const auto textOf = [&](bool allowReference) {
        std::ostringstream out;
        sections.write(out, 0, allowReference);
        return out.str();
    };
    sections.setDefault();
    sections.read(TestSupport::parsed(R"(<MidiInput preset="P"/>)"));
    EXPECT_EQ(textOf(false), written(mapOf(section(sending(R"(midiEvent="Note On,60")", 1)))));
    EXPECT_EQ(textOf(true), "<MidiInput preset=\"P\" merge=\"false\">\n</MidiInput>\n");
    sections.put({MidiEventConfiguration(event(255, 255, "Note On,60"))});
    EXPECT_EQ(textOf(true), textOf(false));
}

std::vector<StartedNotes::Note> taken(StartedNotes& started, const QelMidiMessage& noteOff) {
    std::vector<StartedNotes::Note> notes;
    const bool hasTaken = started.takePress(noteOff, notes);
    EXPECT_EQ(hasTaken, !notes.empty());
    return notes;
}

TEST(StartedNotes, AreGivenBackByPress) {
    StartedNotes started;
    const auto press = [&](int key, std::vector<int> notes, int input = 0) {
        started.beginPress(message(0x90, key, 64, input));
        for (const int each : notes) {
            started.add(message(0x90, each, 64, input));
        }
    };
    const auto release = [&](int key, int input = 0) {
        std::string text;
        for (const StartedNotes::Note& each : taken(started, message(0x80, key, 64, input))) {
            text += std::to_string(each.number) + " ";
        }
        return text;
    };
    press(60, {1, 2, 3});
    press(60, {4, 5}, 1);
    press(61, {6});
    press(60, {7, 8});
    started.remove(message(0x80, 7));
    started.remove(message(0x80, 1)); // not of this press
    EXPECT_EQ(release(60), "8 ");
    EXPECT_EQ(release(60), "1 2 3 ");
    EXPECT_EQ(release(60), "");
    EXPECT_EQ(release(60, 1), "4 5 ");
    started.forget(0);
    EXPECT_EQ(release(61), "");
    EXPECT_EQ(started.size(), 0U);
}

// Against a list of presses, with keys that are never let go of: the oldest notes are forgotten, nothing else.
TEST(StartedNotes, AreLikeAListOfTheLatest) {
    struct Held {
        int input, key, press;
        std::int8_t note;
    };
    RandomCases random;
    StartedNotes started;
    std::vector<Held> list;
    for (int round = 0; round < 12'000; ++round) {
        const int input = random.number(0, 2);
        const int key = random.number(0, 127);
        const int status = random.number(0, 1) == 0 ? 0 : 1; // channel
        const int id = key * 2 + status;
        if (random.number(0, round < 6'000 ? 9 : 1) > 0) {
            started.beginPress(message(0x90 | status, key, 64, input));
            for (int count = random.number(0, 3); count > 0; --count) {
                const auto number = random.number<std::int8_t>(0, 127);
                started.add(message(0x90, number));
                list.push_back({input, id, round, number});
            }
            if (list.size() > StartedNotes::capacity) {
                list.erase(list.begin(), list.end() - StartedNotes::capacity);
            }
        } else {
            const auto isOfKey = [&](const Held& held) { return held.input == input && held.key == id; };
            const auto latest = std::find_if(list.rbegin(), list.rend(), isOfKey);
            std::vector<std::int8_t> expected;
            if (latest != list.rend()) {
                const int press = latest->press;
                std::erase_if(list, [&](const Held& held) {
                    const bool isOfPress = held.press == press;
                    if (isOfPress) {
                        expected.push_back(held.note);
                    }
                    return isOfPress;
                });
            }
            std::vector<std::int8_t> numbers;
            for (const auto& note : taken(started, message(0x80 | status, key, 64, input))) {
                numbers.push_back(note.number);
            }
            ASSERT_EQ(numbers, expected);
        }
        ASSERT_EQ(started.size(), list.size());
    }
}

} // namespace
