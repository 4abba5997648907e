// What becomes of incoming messages in the whole backend.
#include "BackendRig.h"
#include "core/MessageParameters.h"
#include "core/QelMessageManager.h"
#include "midiinput/MidiInputMessageManager.h"
#include "midiinput/MidiInputXml.h"
#include "platform/ThreadMessages.h"
#include "support/RandomCases.h"
#include "values/SelectType.h"

#include <gtest/gtest.h>

namespace {

using Backend::QelMessageManager;
using Backend::MidiEngine::QelMidiMessage;
using namespace Backend::MidiInput;

class MidiInputTest : public testing::Test {
protected:
    // From now on only these configurations hold; what sounds goes on.
    void configure(const std::string& events) {
        const std::string text = "<?xml version=\"1.0\"?>\n<MidiInput>" + events + "</MidiInput>";
        rig.writeFile("Midi Input Presets/P.pst", text);
        EXPECT_EQ(rig.after([](QelMessageManager& backend) {
            backend.postExecuteFunction("<LoadMidiInputPreset preset=\"P\"/>");
        }),
                  "");
        EXPECT_TRUE(rig.takeFaults().empty());
    }
    static std::string event(const std::string& message, const std::string& translations) {
        return "<MidiEvent midiEvent=\"" + message + "\">" + translations + "</MidiEvent>";
    }
    static std::string does(const std::string& translation, const std::string& condition = "Off") {
        return "<Translation condition=\"" + condition + "\">" + translation + "</Translation>";
    }

    BackendRig rig;
};

TEST_F(MidiInputTest, SeesTheNoteOnWithoutVelocityAsANoteOff) {
    configure(event("Note Off,60", does(R"(<MidiControllerChange d1="1" d2="D2"/>)", "D2 eq 100")) +
              event("Note On,60", does(R"(<MidiControllerChange d1="2" d2="D2"/>)")));
    EXPECT_EQ(rig.afterMidi(0x90, 60, 0), "0 B0 1 100");
    EXPECT_EQ(rig.afterMidi(0x80, 60, 99), "");
    EXPECT_EQ(rig.afterMidi(0x90, 60, 1), "0 B0 2 1");
}

TEST_F(MidiInputTest, RunsEveryTranslationWhoseConditionHolds) {
    configure(event("Controller Change,1", does(R"(<MidiControllerChange d1="11" d2="D2"/>)", "D2 ge 10") +
                                               "<Translation><Unknown/></Translation>" +
                                               does(R"(<MidiControllerChange d1="12" d2="D2"/>)", "D2 lt 10") +
                                               does(R"(<MidiControllerChange d1="13" d2="D2"/>)", "D2 ge 20") +
                                               does("<DoNothing/>") +
                                               does(R"(<MidiControllerChange d1="14" d2="D1"/>)")) +
              event("Controller Change,2", "") + event("Controller Change,3", "<Translation/>"));
    EXPECT_EQ(rig.afterMidi(0xB5, 1, 9), "0 B0 12 9; 0 B0 14 1");
    EXPECT_EQ(rig.afterMidi(0xB5, 1, 10), "0 B0 11 10; 0 B0 14 1");
    EXPECT_EQ(rig.afterMidi(0xB5, 1, 20), "0 B0 11 20; 0 B0 13 20; 0 B0 14 1");
    EXPECT_EQ(rig.afterMidi(0xB5, 2, 5), "0 B0 2 5"); // configured with nothing: passed on
    EXPECT_EQ(rig.afterMidi(0xB5, 3, 5), "");         // configured with what there is not: swallowed
    EXPECT_EQ(rig.afterMidi(0xB5, 4, 5), "0 B0 4 5");
    EXPECT_EQ(rig.afterMidi(0xE5, 4, 5), "0 E0 4 5");
}

// The list that was found is run to its end, whatever its translations make of it.
TEST_F(MidiInputTest, EndsTheListThatAPresetReplaces) {
    rig.writeFile("Midi Input Presets/None.pst", "<MidiInput/>");
    configure(event("Controller Change,1", does(R"(<LoadMidiInputPreset preset="None"/>)") +
                                               does(R"(<MidiControllerChange d1="12" d2="D2"/>)")));
    EXPECT_EQ(rig.afterMidi(0xB0, 1, 9), "0 B0 12 9");
    EXPECT_EQ(rig.afterMidi(0xB0, 1, 9), "0 B0 1 9");
}

TEST_F(MidiInputTest, SetsTheTempoAndChoosesByItsBytes) {
    configure(event("Controller Change,1", does(R"(<ChangeTempo value="D2 +60"/>)")) +
              event("Controller Change,2", does(R"(<ChangeDefaultMidiOutput type="D2"/>)")));
    static_cast<void>(rig.player.takeRequests());
    EXPECT_EQ(rig.afterMidi(0xB0, 1, 100), "");
    EXPECT_EQ(rig.player.takeRequests(), std::vector<std::string>{"tempo 160"});
    EXPECT_EQ(rig.afterMidi(0xB0, 2, 2), "");
    EXPECT_EQ(rig.afterMidi(0xB0, 3, 2), "2 B0 3 2");
}

// What holds for each message by itself holds for many at once: order, and what changes between them.
TEST_F(MidiInputTest, HandlesManyAtOnceLikeOneByOne) {
    rig.writeFile("Midi Input Presets/None.pst", "<MidiInput/>");
    configure(event("Controller Change,1", does(R"(<LoadMidiInputPreset preset="None"/>)")) +
              event("Note On,60", does(R"(<MidiNoteOn d1="72" d2="D2"/>)")));
    const auto message = [](int status, int d1, int d2) {
        return QelMidiMessage(static_cast<Backend::MidiEngine::MessageType>(status), static_cast<std::int8_t>(d1),
                              static_cast<std::int8_t>(d2), 0, -1, -1, 0, Backend::noTicks);
    };
    EXPECT_EQ(rig.after([&](QelMessageManager& backend) {
        backend.postProcessMidiInputEvents({message(0x90, 60, 1), message(0xF0, 1, 2), message(0xB0, 7, 1),
                                            message(0xB0, 1, 2), message(0x90, 60, 2), message(0x80, 60, 3),
                                            message(0x80, 60, 4)});
    }),
              "0 90 72 1; 0 B0 7 1; 0 90 60 2; 0 80 60 3; 0 80 72 4");
}

// A key ends what it has started, whatever is configured by then.
TEST_F(MidiInputTest, EndsWhatItsKeyHasStarted) {
    const std::string octave = event("Note On,60", does(R"(<MidiNoteOn d1="D1 +12" d2="D2"/>)"));
    const std::string octaveOff = event("Note Off,60", does(R"(<MidiNoteOff d1="D1 +12" d2="D2"/>)"));
    const std::string fifthOff = event("Note Off,60", does(R"(<MidiNoteOff d1="D1 +7" d2="D2"/>)"));
    const std::string chord = event("Note On,60", does(R"(<Unchanged d1="D1" d2="D2"/>)") +
                                                      does(R"(<MidiNoteOn output="1" channel="4" d1="64" d2="D2"/>)") +
                                                      does(R"(<MidiNoteOn zone="3" d1="67" d2="D2"/>)"));
    const struct {
        const char* name;
        std::string before;
        std::string after;
        const char* started;
        const char* released;
    } rows[] = {
        {"a pair", octave + octaveOff, octave + octaveOff, "0 90 72 80", "0 80 72 9"},
        {"no Note Off", octave, octave, "0 90 72 80", "0 80 72 9"},
        {"all is gone", octave + octaveOff, "", "0 90 72 80", "0 80 72 9"},
        {"all has come", "", octave + octaveOff, "0 90 60 80", "0 80 72 9; 0 80 60 9"},
        {"another interval", octave + octaveOff, octave + fifthOff, "0 90 72 80", "0 80 67 9; 0 80 72 9"},
        {"the condition fails", octave + octaveOff,
         event("Note Off,60", does(R"(<MidiNoteOff d1="72" d2="D2"/>)", "D2 gt 63")), "0 90 72 80", "0 80 72 9"},
        {"the release is swallowed", octave, event("Note Off,60", does("<DoNothing/>")), "0 90 72 80", "0 80 72 9"},
        {"a chord, and a part of its end", chord, event("Note Off,60", does(R"(<Unchanged d1="D1" d2="D2"/>)")),
         "0 90 60 80; 1 94 64 80; 0 90 67 80", "0 80 60 9; 1 84 64 9; 0 80 67 9"},
        {"what starts nothing ends as it is", event("Note On,60", does("<DoNothing/>")), "", "", "0 80 60 9"},
    };
    for (const auto& row : rows) {
        configure(row.before);
        EXPECT_EQ(rig.afterMidi(0x90, 60, 80), row.started) << row.name;
        configure(row.after);
        EXPECT_EQ(rig.afterMidi(0x80, 60, 9), row.released) << row.name;
        EXPECT_TRUE(rig.player.sounding().empty()) << row.name;
    }
}

// The release of a translated key does not end the same note of another one.
TEST_F(MidiInputTest, LeavesTheNotesOfOtherKeysAlone) {
    configure(event("Note On,60", does(R"(<MidiNoteOn d1="72" d2="D2"/>)")));
    EXPECT_EQ(rig.afterMidi(0x90, 60, 80), "0 90 72 80");
    EXPECT_EQ(rig.afterMidi(0x90, 60, 70, 1), "0 90 72 70");
    EXPECT_EQ(rig.afterMidi(0x80, 60, 9), ""); // the other one still sounds
    EXPECT_EQ(rig.afterMidi(0x80, 60, 9, 1), "0 80 72 9");
}

// A closed input lets its keys go: a release that comes later is one like any other.
TEST_F(MidiInputTest, ForgetsTheKeysOfAClosedInput) {
    configure(event("Note On,60", does(R"(<MidiNoteOn d1="72" d2="D2"/>)")));
    EXPECT_EQ(rig.afterMidi(0x90, 60, 80), "0 90 72 80");
    const auto open = [&](bool on) {
        rig.inputs[0].enabled = on;
        return rig.after([&](QelMessageManager& backend) { backend.postSetMidiInputPorts(rig.inputs); });
    };
    EXPECT_EQ(open(false).substr(0, 7), "0 80 72");
    EXPECT_EQ(rig.afterMidi(0x80, 60, 9), "");
    open(true);
    EXPECT_EQ(rig.afterMidi(0x80, 60, 9), "0 80 60 9");
}

// Any configurations, changing all the time: once all keys are up, nothing sounds.
TEST_F(MidiInputTest, LeavesNothingSoundingWhateverIsConfigured) {
    RandomCases random;
    const auto number = [&](int most) { return std::to_string(random.number(0, most)); };
    const auto sends = [&](const std::string& status) {
        std::string way = random.number(0, 2) == 0 ? " output=\"" + number(2) + "\"" : "";
        way += random.number(0, 2) == 0 ? " channel=\"" + std::to_string(random.number(-2, 3)) + "\"" : "";
        way += random.number(0, 3) == 0 ? " zone=\"" + number(1) + "\"" : "";
        return does("<" + status + way + " d1=\"D1 " + std::to_string(random.number(-2, 2)) + "\" d2=\"D2\"/>",
                    random.number(0, 1) == 0 ? "Off" : "D2 gt " + number(127));
    };
    const auto somethingFor = [&](const std::string& which) {
        std::string translations;
        for (int count = random.number(0, 3); count > 0; --count) {
            const int kind = random.number(0, 5);
            translations += kind == 0   ? does("<DoNothing/>")
                            : kind == 1 ? does(R"(<Unchanged d1="D1" d2="D2"/>)")
                            : kind == 2 ? sends("MidiNoteOff")
                                        : sends(which);
        }
        return translations;
    };
    for (int round = 0; round < 60; ++round) {
        std::vector<std::pair<int, int>> down; // status with channel, key
        for (int step = 0; step < 25; ++step) {
            if (random.number(0, 3) == 0) {
                std::string events;
                for (int key = 60; key < 63; ++key) {
                    events += random.number(0, 1) == 0
                                  ? event("Note On," + std::to_string(key), somethingFor("MidiNoteOn"))
                                  : "";
                    events += random.number(0, 1) == 0
                                  ? event("Note Off," + std::to_string(key), somethingFor("MidiNoteOff"))
                                  : "";
                }
                configure(events);
            } else if (!down.empty() && random.number(0, 1) == 0) {
                const auto which = random.number<std::size_t>(0, down.size() - 1);
                rig.afterMidi(0x80 | down[which].first, down[which].second, random.number(1, 127));
                down.erase(down.begin() + static_cast<std::ptrdiff_t>(which));
            } else {
                down.emplace_back(random.number(0, 1), random.number(60, 62));
                rig.afterMidi(0x90 | down.back().first, down.back().second, random.number(1, 127));
            }
        }
        for (const auto& [channel, key] : down) {
            rig.afterMidi(0x80 | channel, key, 64);
        }
        ASSERT_TRUE(rig.player.sounding().empty()) << "round " << round;
    }
}

TEST_F(MidiInputTest, ShowsWhatArrivesToAThreadThatAsks) {
    Platform::createMessageQueue();
    rig.qel->setMidiInputDisplay(Platform::currentThreadId());
    rig.afterMidi(0x93, 60, 0, 1);
    rig.qel->setMidiInputDisplay(0);
    rig.afterMidi(0x93, 61, 0, 1);
    Platform::ThreadMessage shown;
    ASSERT_TRUE(Platform::peekThreadMessage(shown, true));
    EXPECT_EQ(shown.id, 0x8069U);
    const auto message = Backend::takeCopy<QelMidiMessage>(shown.wParam);
    EXPECT_EQ(message->getMidiMessage().toXmlString(), "Note On,60"); // as it came
    EXPECT_EQ(message->getInput(), 1);
    EXPECT_FALSE(Platform::peekThreadMessage(shown, true));
}

TEST_F(MidiInputTest, TakesWhatTheWindowEdits) {
    MidiEventConfigurationMap map;
    readMidiInput(Platform::parseXml("<MidiInput>" +
                                         event("Controller Change,1", does(R"(<MidiProgramChange d1="D2"/>)")) +
                                         "</MidiInput>",
                                     "test")
                      .value(),
                  map);
    auto& manager = rig.qel->getMidiInputMessageManager();
    EXPECT_EQ(rig.after([&](QelMessageManager&) { manager.postPut({map.begin()->second}); }), "");
    EXPECT_EQ(rig.afterMidi(0xB0, 1, 9), "0 C0 9");
    rig.after([&](QelMessageManager&) {
        manager.postSavePreset("Mine", {});
        manager.postStorePreset("None", {});
        manager.postLoadPreset("None");
    });
    EXPECT_EQ(rig.afterMidi(0xB0, 1, 9), "0 B0 1 9");
    rig.after([&](QelMessageManager&) { manager.postLoadPreset("Mine"); });
    EXPECT_EQ(rig.afterMidi(0xB0, 1, 9), "0 C0 9");
    rig.after([&](QelMessageManager&) {
        manager.postDeletePreset("Mine");
        manager.postLoadPreset("Mine");
    });
    EXPECT_EQ(rig.takeFaults().size(), 1U);
}

TEST_F(MidiInputTest, ExecutesATranslationByItself) {
    const auto after = [&](const std::string& xml) {
        return rig.after([&](QelMessageManager& backend) {
            backend.postExecuteTranslation(
                xml, {Backend::MidiEngine::MessageType::noteOn, 60, 0, 3, -1, -1, 0, Backend::noTicks});
        });
    };
    EXPECT_EQ(after(does(R"(<Unchanged channel="unchanged" d1="D1" d2="D2"/>)", "D2 eq 100")), "0 83 60 100");
    EXPECT_EQ(after(does(R"(<Unchanged d1="D1" d2="D2"/>)", "D2 eq 0")), "");
    EXPECT_TRUE(rig.takeFaults().empty());
    EXPECT_EQ(after("<Translation>\n<ShowNothing/></Translation>"), "");
    EXPECT_EQ(rig.takeFaults(), std::vector<std::string>{"translation:2: there is no translation <ShowNothing>"});
}

} // namespace
