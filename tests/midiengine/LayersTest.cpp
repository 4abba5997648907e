// What layers make of the events they are given.
#include "EngineRig.h"
#include "midiengine/Layer.h"

#include <gtest/gtest.h>
#include <ostream>

namespace {

struct Case {
    const char* name;
    const char* layers;
    const char* steps;
    const char* played; // "TICK OUTPUT STATUS D1 D2"
};
void PrintTo(const Case& row, std::ostream* out) {
    *out << row.steps;
}

class LayersTest : public testing::TestWithParam<Case> {};

TEST_P(LayersTest, Plays) {
    EngineRig rig(GetParam().layers);
    EXPECT_EQ(rig.play(GetParam().steps), GetParam().played);
}

INSTANTIATE_TEST_SUITE_P(
    , LayersTest,
    testing::Values(
        Case{"TheDefaultLayerPassesNotesOn", "<Layer/>", "on 60 100; off 60 33", "0 0 90 60 100; 1 0 80 60 33"},
        Case{"WithoutLayersNothingPlays", "", "on 60 100; off 60; cc 7 1", ""},
        // The send step.
        Case{"OutputAndChannelAreTheLayers", R"(<Layer output="2" channel="15"/>)", "on 60 1; bend 0 64",
             "0 2 9F 60 1; 1 2 EF 0 64"},
        Case{"AnOutputThatIsNotThereGetsNothing", R"(<Layer output="3"/><Layer channel="1"/>)", "on 60 1; cc 1 2",
             "0 0 91 60 1; 1 0 B1 1 2"},
        Case{"AChannelOutOfRangeIsTheFirst", R"(<Layer channel="16"/>)", "on 60 1", "0 0 90 60 1"},
        Case{"FixedTransposeIsTheNote", R"(<Layer transpose="60"/>)", "on 40 1; on 90 2; off 40; off 90",
             "0 0 90 60 1; 1 0 90 60 2; 3 0 80 60 64"},
        Case{"TransposeAboveTheKeyboardFolds", R"(<Layer transpose="+24"/>)", "on 120 1; off 120",
             "0 0 90 120 1; 1 0 80 120 64"},
        Case{"TransposeBelowTheKeyboardFolds", R"(<Layer transpose="-127"/>)", "on 3 1; on 0 1",
             "0 0 90 8 1; 1 0 90 5 1"},
        Case{"CompressComesBeforeTheOffset", R"(<Layer compress="1_2" velocity="+10"/>)", "on 60 100; on 61 101",
             "0 0 90 60 60; 1 0 90 61 60"},
        Case{"AFixedVelocityIgnoresCompress", R"(<Layer compress="1_2" velocity="90"/>)", "on 60 100; off 60 3",
             "0 0 90 60 90; 1 0 80 60 90"},
        Case{"VelocitiesStayInRange", R"(<Layer compress="9_1"/><Layer channel="1" velocity="-100"/>)", "on 60 50",
             "0 0 90 60 127; 0 0 91 60 0"},
        // Which events a layer takes.
        Case{"NoteRangeIsInclusive", R"(<Layer minNote="C4" maxNote="E4"/>)",
             "on 59 1; on 60 1; on 64 1; on 65 1; off 65; off 64; off 59", "1 0 90 60 1; 2 0 90 64 1; 5 0 80 64 64"},
        Case{"VelocityRangeIsInclusive", R"(<Layer minVelocity="10" maxVelocity="20"/>)",
             "on 60 9; on 61 10; on 62 20; on 63 21", "1 0 90 61 10; 2 0 90 62 20"},
        Case{"ANoteOffFollowsItsNoteOn", R"(<Layer maxVelocity="63"/><Layer minVelocity="64" channel="1"/>)",
             "on 60 20; on 60 100; off 60; off 60", "0 0 90 60 20; 1 0 91 60 100; 2 0 80 60 20; 3 0 81 60 100"},
        Case{"EachSourceHasItsOwnVelocity", R"(<Layer maxVelocity="63"/><Layer minVelocity="64" channel="1"/>)",
             "on 60 20; on 60 100 in=1; off 60 in=1; off 60",
             "0 0 90 60 20; 1 0 91 60 100; 2 0 81 60 100; 3 0 80 60 20"},
        Case{"AnExplicitPressHasAVelocityOfItsOwn", R"(<Layer minVelocity="64"/>)",
             "on 60 20 out=1; on 60 100; off 60; off 60 out=1",
             "0 1 90 60 20; 1 0 90 60 100; 2 0 80 60 100; 3 1 80 60 20"},
        Case{"ANoteOffWithoutNoteOnHasVelocity0", R"(<Layer maxVelocity="63"/>)", "off 60 100", "0 0 80 60 0"},
        Case{"ALayersZone", R"(<Layer zone="1"/>)",
             "on 60 1 zone=0; on 61 1 zone=1; on 62 1; cc 7 1 zone=0; cc 7 2 zone=1",
             "1 0 90 61 1; 2 0 90 62 1; 4 0 B0 7 2"},
        Case{"AMutedLayerIsSilent", R"(<Layer mute="true"/><Layer channel="1"/>)", "on 60 1; cc 7 1",
             "0 0 91 60 1; 1 0 B1 7 1"},
        Case{"OnlySoloedLayersPlayEvenWhenMuted", R"(<Layer/><Layer channel="1" mute="true" solo="true"/>)",
             "on 60 1; cc 7 1", "0 0 91 60 1; 1 0 B1 7 1"},
        // Other events.
        Case{"EachOutputAndChannelOnce",
             R"(<Layer/><Layer transpose="+1"/><Layer channel="1"/><Layer output="0"/><Layer output="1"/>)",
             "bend 1 2; bend 3 4; program 5",
             "0 0 E0 1 2; 0 0 E1 1 2; 0 1 E0 1 2; 1 0 E0 3 4; 1 0 E1 3 4; 1 1 E0 3 4; 2 0 C0 5; 2 0 C1 5; 2 1 C0 5"},
        // Held notes.
        Case{"ANoteThatAnotherHoldsGoesOn", "<Layer/>", "on 60 1; on 60 2 in=1; off 60; off 60 in=1",
             "0 0 90 60 1; 1 0 90 60 2; 3 0 80 60 64"},
        Case{"WithoutNoteStackEachNoteOffGoesOut", R"(<Layer useNoteStack="false"/>)",
             "on 60 1; on 60 2 in=1; off 60; off 60 in=1", "0 0 90 60 1; 1 0 90 60 2; 2 0 80 60 64; 3 0 80 60 64"},
        Case{"TwoLayersOnOneNote", "<Layer/><Layer/>", "on 60 1; off 60", "0 0 90 60 1; 0 0 90 60 1; 1 0 80 60 64"},
        Case{"ANoteOffOfANoteThatDoesNotSound", "<Layer/>", "off 60", "0 0 80 60 64"},
        Case{"ANoteThatWasNeverSentCutsNobodyOff", R"(<Layer output="1"/>)",
             "output 1 off; on 60 1; output 1 on; on 60 2 in=1; off 60; off 60 in=1", "3 1 90 60 2; 5 1 80 60 64"},
        // Toggles.
        Case{"Type1EndsOnTheSecondPress", R"(<Layer toggle="type1"/>)", "on 60 1; off 60; on 60 2; off 60; on 60 3",
             "0 0 90 60 1; 2 0 80 60 2; 4 0 90 60 3"},
        Case{"Type2StrikesAgain", R"(<Layer toggle="type2"/>)", "on 60 1; off 60; on 60 2; off 60",
             "0 0 90 60 1; 2 0 80 60 2; 2 0 90 60 2"},
        Case{"WhoeverPressesAgainEndsIt", R"(<Layer toggle="type1"/>)", "on 60 1; on 60 2 in=1 zone=3",
             "0 0 90 60 1; 1 0 80 60 2"},
        Case{"MonoToggleEndsTheOther", R"(<Layer toggle="type1" mono="true"/>)", "on 60 1; on 64 2; on 60 3; on 60 4",
             "0 0 90 60 1; 1 0 90 64 2; 1 0 80 60 1; 2 0 90 60 3; 2 0 80 64 2; 3 0 80 60 4"},
        // Mono.
        Case{"MonoIsLegatoAndReturns", R"(<Layer mono="true"/>)", "on 60 10; on 64 20; off 64 30; off 60 40",
             "0 0 90 60 10; 1 0 90 64 20; 1 0 80 60 10; 2 0 90 60 30; 2 0 80 64 30; 3 0 80 60 40"},
        Case{"ReleasingANoteBelowTheTopPlaysNothing", R"(<Layer mono="true"/>)",
             "on 60 1; on 64 2; on 67 3; off 64; off 67; off 60",
             "0 0 90 60 1; 1 0 90 64 2; 1 0 80 60 1; 2 0 90 67 3; 2 0 80 64 2; 4 0 90 60 64; 4 0 80 67 64; 5 0 80 60 "
             "64"},
        // A note ends where it began.
        Case{"WhateverTheDefaultOutput", "<Layer/>", "on 60 1; default 1; off 60; on 60 2; default 9; off 60",
             "0 0 90 60 1; 2 0 80 60 64; 3 1 90 60 2; 5 1 80 60 64"},
        Case{"MonoReturnsOnTheNewDefaultOutput", R"(<Layer mono="true"/>)",
             "on 60 1; on 62 2; default 1; off 62; off 60",
             "0 0 90 60 1; 1 0 90 62 2; 1 0 80 60 1; 3 1 90 60 64; 3 0 80 62 64; 4 1 80 60 64"},
        Case{"NewLayersEndWhatTheOldOnesPlay", R"(<Layer transpose="+12"/>)",
             "on 60 1; layers <Layer channel=\"1\"/>; off 60", "0 0 90 72 1; - 0 80 72 100; 2 0 81 60 64"}),
    [](const testing::TestParamInfo<Case>& row) { return row.param.name; });

TEST(LayerTest, TransposesInKey) {
    struct Row {
        const char* key;
        const char* steps;
        int note;
        int expected;
    };
    for (const Row& row : {
             Row{"C", "", 61, 61},   Row{"C", "+1", 60, 62},    Row{"C", "+1", 64, 65}, Row{"C", "+1", 71, 72},
             Row{"C", "+7", 61, 73}, Row{"C", "-1", 60, 59},    Row{"C", "-7", 60, 48}, Row{"C", "-8", 60, 47},
             Row{"C", "+9", 62, 77}, Row{"C", "+1", 61, 63},    Row{"C", "-1", 66, 64}, Row{"C", "-1", 61, 59},
             Row{"D", "+2", 62, 66}, Row{"D", "+1", 61, 62},    Row{"D", "+1", 60, 61}, Row{"F#5", "+1", 66, 68},
             Row{"C", "2", 60, 64},  Row{"C", "+14", 120, 120}, Row{"C", "-7", 2, 2},   Row{"H", "+1", 60, 61},
             Row{"c", "+1", 60, 61},
         }) {
        Backend::Layers::Layer layer;
        layer.key = Note::fromPitchName(row.key);
        layer.transpose = RelativeFixedValue(row.steps);
        EXPECT_EQ(layer.transform(static_cast<std::int8_t>(row.note)), row.expected)
            << row.key << " " << row.steps << " " << row.note;
    }
}

TEST(LayerTest, SummarySaysWhatDiffersFromTheDefault) {
    const auto name = [](int output) { return "Out " + std::to_string(output); };
    EXPECT_EQ(layersOf("<Layer/>")[0].summary(name), "L:1  Ch:1");
    EXPECT_EQ(layersOf(R"(<Layer/><Layer channel="9" zone="0" minVelocity="1" output="2" transpose="-12" key="C#"
                          velocity="64" compress="3_4" toggle="TYPE2" mono="true" useNoteStack="false"/>)")[1]
                  .summary(name),
              "L:2  Ch:10  Z:1  VR:1-127  O:Out 2  T:-12  K:C#  V:64  Comp:3/4  TOGGLE2  MONO  STACK OFF");
}

} // namespace
