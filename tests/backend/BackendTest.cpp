// The backend as its clients meet it.
#include "BackendRig.h"
#include "backend/QelFactory.h"
#include "core/MessageManagerMaster.h"
#include "core/QelMessageManager.h"
#include "midiengine/MidiEngine.h"
#include "values/NoteToggle.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectControlType.h"
#include "values/SelectType.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using Backend::QelIF;
using Backend::QelMessageManager;
using testing::ElementsAre;
using testing::HasSubstr;
using Kind = SelectType::Kind;

class BackendTest : public testing::Test {
protected:
    std::string load(const std::string& layersAndZones, const std::string& attributes = "") {
        const std::string path = rig.writeFile("program.prg", "<ProgramFile>\n<Program " + attributes + ">" +
                                                                  layersAndZones + "</Program>\n</ProgramFile>\n");
        return rig.after([&](QelMessageManager& backend) { backend.postLoadProgram(path); });
    }
    // What a note plays after an operation on the layers.
    std::string keyAfter(const std::function<void(QelIF&)>& operation) {
        rig.afterDirect(operation);
        return rig.afterKey();
    }

    BackendRig rig;
};

TEST_F(BackendTest, PlaysAtOnceWithItsDefaultLayer) {
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 80 60 64");
}

TEST_F(BackendTest, StartsAgainWithWhatTheUserChose) {
    rig.after([](QelMessageManager& backend) {
        backend.postChangeDefaultMidiOutput(SelectType::fixed(2));
        backend.postChangeMidiThru(OnOffToggle(OnOffToggle::State::off), true);
    });
    EXPECT_EQ(rig.afterMidi(0x90, 60, 1), "");
    rig.stop();
    rig.start();
    EXPECT_EQ(rig.afterMidi(0x90, 60, 1), "");
    rig.after([](QelMessageManager& backend) { backend.postChangeMidiThru(OnOffToggle(), true); });
    EXPECT_EQ(rig.afterKey(), "2 90 60 100; 2 80 60 64");
    rig.stop();
    rig.start();
    EXPECT_EQ(rig.afterKey(), "2 90 60 100; 2 80 60 64");
}

TEST_F(BackendTest, StopsWhileNotesSoundAndWithoutAnySlice) {
    rig.afterMidi(0x90, 60, 1);
    rig.stop();
    TestSupport::FakePlayer player;
    TemporaryFolder folder;
    const auto qel =
        Backend::QelFactory::createQel("Test", player, true, Backend::Surroundings::inFolder(folder.path()));
    qel->getQelMessageManager().sendInitialize();
    qel->getQelMessageManager().sendEndInitialize();
    qel->getQelMessageManager().sendEnd();
    qel->getMessageManagerMaster().stop();
}

TEST_F(BackendTest, IncomingMessages) {
    EXPECT_EQ(rig.afterMidi(0x9F, 60, 100), "0 90 60 100"); // on the layers' channel
    EXPECT_EQ(rig.afterMidi(0x9F, 60, 0), "0 80 60 100");   // a Note Off
    EXPECT_EQ(rig.afterMidi(0xB3, 7, 0), "0 B0 7 0");
    EXPECT_EQ(rig.afterMidi(0xF0, 1, 2), ""); // System Exclusive
    EXPECT_EQ(rig.afterMidi(0xF8, 0, 0), "0 F8");
    EXPECT_EQ(rig.afterMidi(0x90, 60, 1, 2), ""); // no such input
    EXPECT_EQ(rig.afterMidi(0x90, 60, 1, -1), "");
    rig.inputs[1].enabled = false;
    rig.after([&](QelMessageManager& backend) { backend.postSetMidiInputPorts(rig.inputs); });
    EXPECT_EQ(rig.afterMidi(0x90, 60, 1, 1), "");
    EXPECT_EQ(rig.afterMidi(0x90, 60, 1, 0), "0 90 60 1");
}

TEST_F(BackendTest, ManyIncomingMessagesAtOnce) {
    std::vector<Backend::MidiEngine::QelMidiMessage> messages;
    for (int i = 0; i < 3; ++i) {
        messages.emplace_back(Backend::MidiEngine::MessageType::noteOn, std::int8_t{60}, static_cast<std::int8_t>(i),
                              std::int8_t{5}, std::int8_t{-1}, std::int8_t{-1}, static_cast<std::int8_t>(i),
                              Backend::noTicks);
    }
    EXPECT_EQ(rig.after([&](QelMessageManager& backend) { backend.postProcessMidiInputEvents(messages); }),
              "0 80 60 100; 0 90 60 1");
}

// Programs and banks.

TEST_F(BackendTest, AProgramBringsLayersZonesAndTempo) {
    static_cast<void>(rig.player.takeRequests());
    load(R"(<Controls><Anything a="1">text</Anything></Controls><Zones><Zone id="1" transpose="12"/></Zones><Unknown/>
            <Layers><Layer output="1"/><Layer channel="1" transpose="+7"/></Layers>)",
         R"(name="Split" tempo="90" tempoSource="1")");
    EXPECT_THAT(rig.takeFaults(), ElementsAre());
    EXPECT_EQ(rig.afterKey(), "1 90 60 100; 0 91 67 100; 1 80 60 64; 0 81 67 64");
    const std::vector<std::string> requests = rig.player.takeRequests();
    EXPECT_THAT(requests, testing::IsSupersetOf({"tempo 90", "tempoSource 1"}));
    EXPECT_EQ(rig.afterDirect([](QelIF& qel) {
        qel.playMidi({Backend::MidiEngine::MessageType::noteOn, 60, 1, -1, -1, 1, -1, Backend::noTicks});
    }),
              "1 90 72 1; 0 91 79 1");
    load("");
    EXPECT_EQ(rig.afterKey(), "0 90 60 100; 0 80 60 64"); // without sections: the defaults
}

TEST_F(BackendTest, LoadingAProgramEndsWhatSounds) {
    rig.afterMidi(0x90, 60, 1);
    EXPECT_EQ(load("<Layers><Layer channel=\"3\"/></Layers>"), "0 80 60 100");
}

TEST_F(BackendTest, ABadFileIsReportedOnceAndChangesNothing) {
    load("<Layers><Layer channel=\"3\"/></Layers>", "tempo=\"77\"");
    static_cast<void>(rig.player.takeRequests());
    struct Row {
        const char* text;
        const char* program; // what is wrong with it as a program: "file:line: reason" begins so
        const char* bank;
    };
    for (const Row& row : {
             Row{"", "bad.xml:", "bad.xml:"},
             Row{"<ProgramFile>\n<Program>\n<Layers>\n</Program></ProgramFile>", "bad.xml:4: ", "bad.xml:4: "},
             Row{"<?xml version=\"1.0\"?>\n<Other/>", "bad.xml:2: the root element is <Other>, not <ProgramFile>",
                 "bad.xml:2: the root element is <Other>, not <Bank>"},
             Row{"<ProgramFile>\n</ProgramFile>", "bad.xml:1: there is no <Program>", "bad.xml:1: the root element"},
             Row{"<Bank>\n\n</Bank>", "bad.xml:1: the root element", "bad.xml:1: there is no <Program>"},
             Row{"<ProgramFile><Program/>\n<Program/></ProgramFile>", "bad.xml:2: there is more than one <Program>",
                 "bad.xml:1: the root element"},
         }) {
        const std::string path = rig.writeFile("bad.xml", row.text);
        rig.after([&](QelMessageManager& backend) { backend.postLoadProgram(path); });
        EXPECT_THAT(rig.takeFaults(), ElementsAre(testing::StartsWith(row.program))) << row.text;
        rig.after([&](QelMessageManager& backend) { backend.postLoadBank(path); });
        EXPECT_THAT(rig.takeFaults(), ElementsAre(testing::StartsWith(row.bank))) << row.text;
    }
    rig.after([](QelMessageManager& backend) { backend.postLoadProgram("/no such folder/x.prg"); });
    EXPECT_THAT(rig.takeFaults(), ElementsAre(HasSubstr("x.prg: ")));
    std::ostringstream trace;
    trace << std::ifstream(rig.qel->getApplicationData() / "qel.log").rdbuf();
    EXPECT_THAT(trace.str(), HasSubstr("bad.xml:4: "));
    EXPECT_THAT(trace.str(), HasSubstr("x.prg: "));
    EXPECT_EQ(rig.afterKey(), "0 93 60 100; 0 83 60 64");
    EXPECT_THAT(rig.player.takeRequests(), ElementsAre());
}

TEST_F(BackendTest, ProgramsOfABankAreSteppedThrough) {
    const auto change = [this](const SelectType& which) {
        rig.after([&](QelMessageManager& backend) { backend.postChangeProgram(which); });
        return rig.afterKey().substr(0, 4);
    };
    EXPECT_EQ(change(SelectType(Kind::up)), "0 90"); // no bank
    const std::string path =
        rig.writeFile("three.bnk", R"(<Bank><Program><Layers><Layer channel="1"/></Layers></Program>
        <Program><Layers><Layer channel="2"/></Layers></Program><Program><Layers><Layer channel="3"/></Layers></Program>
        </Bank>)");
    rig.after([&](QelMessageManager& backend) { backend.postLoadBank(path); });
    EXPECT_EQ(rig.afterKey().substr(0, 4), "0 91");
    EXPECT_EQ(change(SelectType(Kind::up)), "0 92");
    EXPECT_EQ(change(SelectType::fixed(2)), "0 93");
    EXPECT_EQ(change(SelectType(Kind::up)), "0 91");
    EXPECT_EQ(change(SelectType(Kind::down)), "0 93");
    EXPECT_EQ(change(SelectType::fixed(3)), "0 93");
    EXPECT_EQ(change(SelectType::fixed(-1)), "0 93");
    EXPECT_EQ(change(SelectType(Kind::selected)), "0 93");
    EXPECT_EQ(change(SelectType(Kind::all)), "0 93");
}

TEST_F(BackendTest, TempoStaysInItsRange) {
    const auto change = [this](const RelativeFixedValue& tempo) {
        static_cast<void>(rig.player.takeRequests());
        rig.after([&](QelMessageManager& backend) { backend.postChangeTempo(tempo, true); });
        return rig.player.takeRequests().at(0);
    };
    EXPECT_EQ(change(RelativeFixedValue::relative(-20)), "tempo 100");
    EXPECT_EQ(change(RelativeFixedValue::relative(1000)), "tempo 500");
    EXPECT_EQ(change(RelativeFixedValue::fixed(1)), "tempo 10");
    EXPECT_EQ(change(RelativeFixedValue::fixed(120)), "tempo 120");
}

// Selections.

TEST_F(BackendTest, LayersAreChangedBySelection) {
    load(R"(<Layers><Layer channel="0"/><Layer channel="1" mute="true"/><Layer channel="2" mute="true"/></Layers>)");
    const OnOffToggle toggle;
    const OnOffToggle on(OnOffToggle::State::on);
    const OnOffToggle off(OnOffToggle::State::off);
    const auto mute = [&](const SelectType& which, const OnOffToggle& how) {
        rig.afterDirect([&](QelIF& qel) { qel.changeLayerMute(which, how); });
        return rig.afterMidi(0xB0, 1, 1);
    };
    EXPECT_EQ(mute(SelectType(Kind::up), off), "0 B0 1 1; 0 B1 1 1"); // the first layer is selected
    EXPECT_EQ(mute(SelectType(Kind::down), off), "0 B0 1 1; 0 B1 1 1; 0 B2 1 1");
    EXPECT_EQ(mute(SelectType(Kind::selected), on), "0 B1 1 1; 0 B2 1 1");
    EXPECT_EQ(mute(SelectType::fixed(2), on), "0 B1 1 1");
    EXPECT_EQ(mute(SelectType::fixed(3), on), "0 B1 1 1");
    EXPECT_EQ(mute(SelectType(Kind::all), toggle), "0 B0 1 1; 0 B2 1 1");             // each by itself
    rig.afterDirect([](QelIF& qel) { qel.dataSelectLayer(SelectType(Kind::down)); }); // from the first to the last
    EXPECT_EQ(mute(SelectType(Kind::selected), on), "0 B0 1 1");
    rig.afterDirect([&](QelIF& qel) { qel.changeLayerSolo(SelectType::fixed(1), on); });
    EXPECT_EQ(rig.afterMidi(0xB0, 1, 1), "0 B1 1 1");
}

TEST_F(BackendTest, LayerValues) {
    load(R"(<Layers><Layer transpose="+120" velocity="50"/></Layers>)");
    const SelectType layer;
    EXPECT_EQ(keyAfter([&](QelIF& qel) { qel.changeLayerTranspose(layer, RelativeFixedValue::fixed(5)); }),
              "0 90 65 50; 0 80 65 50");
    EXPECT_EQ(keyAfter([&](QelIF& qel) { qel.changeLayerTranspose(layer, RelativeFixedValue::relative(-200)); }),
              "0 90 5 50; 0 80 5 50"); // -127, folded
    EXPECT_EQ(keyAfter([&](QelIF& qel) { qel.changeLayerVelocity(layer, RelativeFixedValue::relative(100)); }),
              "0 90 5 127; 0 80 5 127"); // a fixed number stays fixed
    EXPECT_EQ(keyAfter([&](QelIF& qel) { qel.changeLayerNoteToggle(layer, NoteToggle(NoteToggle::State::type1)); }),
              "0 90 5 127; ");
    EXPECT_EQ(rig.afterDirect([&](QelIF& qel) { qel.changeLayerMono(layer, OnOffToggle()); }), "0 80 5 100");
}

TEST_F(BackendTest, AChangeThatChangesNothingCostsHeldNotesNothing) {
    rig.afterMidi(0x90, 60, 1);
    EXPECT_EQ(rig.afterDirect([](QelIF& qel) {
        qel.changeLayerMute(SelectType(Kind::all), OnOffToggle(OnOffToggle::State::off));
        qel.changeLayerTranspose(SelectType::fixed(7), RelativeFixedValue::fixed(3));
        qel.changeLayerVelocity(SelectType(Kind::all), RelativeFixedValue());
        qel.selectZone(SelectType(Kind::up));
        qel.dataSelectLayer(SelectType(Kind::up));
    }),
              "");
    EXPECT_EQ(rig.afterMidi(0x80, 60, 1), "0 80 60 1");
}

TEST_F(BackendTest, ZonesAreSelectedByIdAndWrapAround) {
    load(R"(<Zones><Zone id="9" transpose="3"/><Zone id="2"/><Zone id="5"/></Zones>)");
    const auto transpositions = [this] {
        std::string notes;
        for (const std::int8_t zone : {2, 5, 9}) {
            notes += rig.afterDirect([zone](QelIF& qel) {
                            using Backend::MidiEngine::MessageType;
                            qel.playMidi({MessageType::noteOn, 60, 1, -1, -1, zone, -1, Backend::noTicks});
                            qel.playMidi({MessageType::noteOff, 60, 1, -1, -1, zone, -1, Backend::noTicks});
                        })
                         .substr(5, 3);
        }
        return notes;
    };
    const auto change = [&](const SelectType& which, const RelativeFixedValue& semitones) {
        rig.afterDirect([&](QelIF& qel) { qel.changeZoneTranspose(which, semitones); });
        return transpositions();
    };
    const auto select = [&](const SelectType& which) { rig.afterDirect([&](QelIF& qel) { qel.selectZone(which); }); };
    const SelectType selected;
    EXPECT_EQ(transpositions(), "60 60 63 ");
    EXPECT_EQ(change(selected, RelativeFixedValue::relative(1)), "61 60 63 "); // the lowest
    EXPECT_EQ(change(SelectType(Kind::up), RelativeFixedValue::relative(2)), "61 62 63 ");
    EXPECT_EQ(change(SelectType(Kind::down), RelativeFixedValue::fixed(7)), "61 62 67 ");
    EXPECT_EQ(change(SelectType::fixed(9), RelativeFixedValue::relative(-7)), "61 62 60 ");
    EXPECT_EQ(change(SelectType::fixed(1), RelativeFixedValue::relative(9)), "61 62 60 ");
    select(SelectType(Kind::down));
    EXPECT_EQ(change(selected, RelativeFixedValue::fixed(9)), "61 62 69 ");
    select(SelectType::fixed(5));
    EXPECT_EQ(change(selected, RelativeFixedValue::fixed(0)), "61 60 69 ");
    select(SelectType::fixed(6));
    select(SelectType(Kind::up));
    EXPECT_EQ(change(selected, RelativeFixedValue::fixed(-1)), "61 60 59 ");
    select(SelectType(Kind::all));
    EXPECT_EQ(change(selected, RelativeFixedValue::relative(200)), "127127127"); // +127, folded
    EXPECT_EQ(change(SelectType(Kind::all), RelativeFixedValue::fixed(4)), "64 64 64 ");
}

TEST_F(BackendTest, TheStatusIsACopyOfHowThingsAre) {
    const auto status = [this](const std::function<void(QelIF&)>& operation) {
        rig.afterDirect(operation);
        rig.after([](QelMessageManager& backend) { backend.postPublishStatus(); });
        return rig.qel->getStatus();
    };
    load(R"(<Zones><Zone id="3"/><Zone id="4"/></Zones>)", R"(name="Two" tempo="90")");
    Backend::QelStatus now = status([](QelIF&) {});
    EXPECT_EQ(now.program, "Two");
    EXPECT_EQ(now.zone, (Backend::QelStatus::SelectedZone{3, 0, 1}));
    EXPECT_EQ(now.control, std::nullopt);
    const Backend::QelStatus before = now;
    now = status([](QelIF& qel) {
        qel.selectZone(SelectType(Kind::all));
        qel.changeZoneTranspose(SelectType::fixed(3), RelativeFixedValue::fixed(-12));
        qel.selectControl(SelectControlType(SelectControlType::Kind::down));
        qel.changeControl(SelectControlType(SelectControlType::Kind::selected), RelativeFixedValue::fixed(5));
        qel.changeTempo(RelativeFixedValue::fixed(77), true);
    });
    EXPECT_EQ(now.zone, (Backend::QelStatus::SelectedZone{3, -12, 2}));
    ASSERT_TRUE(now.control);
    EXPECT_EQ(now.control->value, 5);
    EXPECT_EQ(now.tempo, 77);
    EXPECT_NE(now, before);
}

// Ports.

TEST_F(BackendTest, TheDefaultOutputGoesThroughEnabledOutputs) {
    const auto change = [this](const SelectType& which) {
        rig.after([&](QelMessageManager& backend) { backend.postChangeDefaultMidiOutput(which); });
        return rig.afterKey().substr(0, 1);
    };
    EXPECT_EQ(change(SelectType(Kind::down)), "2");
    EXPECT_EQ(change(SelectType(Kind::up)), "0");
    rig.outputs[1].enabled = false;
    rig.after([&](QelMessageManager& backend) { backend.postSetMidiOutputPorts(rig.outputs); });
    EXPECT_EQ(change(SelectType(Kind::up)), "2");
    EXPECT_EQ(change(SelectType::fixed(1)), "2");
    EXPECT_EQ(change(SelectType::fixed(0)), "0");
    EXPECT_EQ(change(SelectType::fixed(-1)), "0");
    EXPECT_EQ(change(SelectType(Kind::all)), "0");
}

TEST_F(BackendTest, PortsAreOpenedAsTheUserLeftThem) {
    static_cast<void>(rig.player.takeRequests());
    rig.after([](QelMessageManager& backend) {
        backend.postEnableMidiOutput(0, true);
        backend.postEnableMidiOutput(1, false);
        backend.postEnableMidiInput(0, false);
    });
    EXPECT_THAT(rig.player.takeRequests(), ElementsAre("output 0 on", "output 1 off", "input 0 off"));
    rig.stop();
    rig.start();
    const std::vector<std::string> requests = rig.player.takeRequests();
    EXPECT_THAT(requests, testing::IsSupersetOf({"output 1 off", "input 0 off"}));
    EXPECT_THAT(requests, testing::Not(testing::Contains("output 0 on"))); // it is open
}

TEST_F(BackendTest, AnOutputThatIsSwitchedOffIsSilencedFirst) {
    rig.afterMidi(0x90, 60, 1);
    EXPECT_EQ(rig.after([](QelMessageManager& backend) { backend.postEnableMidiOutput(0, false); }), "0 80 60 100");
    EXPECT_EQ(rig.afterKey(), "; ");
}

TEST_F(BackendTest, ResetEndsWhatSounds) {
    rig.afterMidi(0x90, 60, 1);
    EXPECT_EQ(rig.after([](QelMessageManager& backend) { backend.postResetQel(); }), "0 80 60 100");
}

} // namespace
