// The four kinds, their grid, and sequences with and without them.
#include "EngineRig.h"

#include <gtest/gtest.h>

namespace {

using Backend::MidiEngine::QelMidiMessage;

struct Case {
    std::string name;
    std::string layers;
    std::string steps;
    std::string played;
};
void PrintTo(const Case& each, std::ostream* out) {
    *out << each.name;
}

class ArpeggioTest : public testing::TestWithParam<Case> {};

TEST_P(ArpeggioTest, Plays) {
    EngineRig rig(GetParam().layers);
    EXPECT_EQ(rig.play(GetParam().steps), GetParam().played);
}

// Beat 4 or so, so that a whole performance is readable: step by step a tick.
std::string layer(const std::string& arpeggio, const std::string& sequence = "", const std::string& attributes = "") {
    return "<Layer " + attributes + "><Arpeggio><" + arpeggio + "/></Arpeggio>" +
           (sequence.empty() ? "" : "<SequenceSetting preset=\"" + sequence + "\"/>") + "</Layer>";
}
std::string sequenceLayer(const std::string& sequence, const std::string& attributes = "") {
    return "<Layer><SequenceSetting preset=\"" + sequence + "\" " + attributes + "/></Layer>";
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ArpeggioTest,
    testing::Values(Case{"ChordOnEachBeat", layer(R"(ChordArpeggio beat="4" length="2")"),
                         "with on 60 1; on 64 2; wait 7; off 60; wait 5",
                         "0 0 90 60 1; 0 0 90 64 2; 2 0 80 60 1; 2 0 80 64 2; 4 0 90 60 1; 4 0 90 64 2; 6 0 80 60 1; 6 "
                         "0 80 64 2; 8 0 90 64 2; 10 0 80 64 2; 12 0 90 64 2"},
                    Case{"ChordTakesALateNoteWithTheNextBeat", layer(R"(ChordArpeggio beat="4" length="4")"),
                         "on 60 1; on 64 2; wait 4; off 64; wait 5",
                         "0 0 90 60 1; 4 0 80 60 1; 4 0 90 60 1; 4 0 90 64 2; 8 0 80 60 1; 8 0 80 64 2; 8 0 90 60 1"},
                    Case{"UpOnePerBeat", layer(R"(UpArpeggio beat="2" length="1")"),
                         "with on 67 1; with on 60 1; on 64 1; wait 1; on 64 9; wait 4",
                         "0 0 90 60 1; 1 0 80 60 1; 2 0 90 64 1; 3 0 80 64 1; 4 0 90 67 1; 5 0 80 67 1; 6 0 90 60 1"},
                    Case{"DownFromTheHighest", layer(R"(DownArpeggio beat="2" length="5")"),
                         "with on 60 1; with on 67 1; on 64 1; wait 6",
                         "0 0 90 67 1; 2 0 80 67 1; 2 0 90 64 1; 4 0 80 64 1; 4 0 90 60 1; 6 0 80 60 1; 6 0 90 67 1"},
                    Case{"UpDownDoesNotRepeatItsEnds", layer(R"(UpDownArpeggio beat="1" length="1")"),
                         "with on 60 1; with on 67 1; on 64 1; wait 5",
                         "0 0 90 60 1; 1 0 80 60 1; 1 0 90 64 1; 2 0 80 64 1; 2 0 90 67 1; 3 0 80 67 1; 3 0 90 64 1; 4 "
                         "0 80 64 1; 4 0 90 60 1; 5 0 80 60 1; 5 0 90 64 1"},
                    Case{"UpDownAlternatesTwoAndRepeatsOne", layer(R"(UpDownArpeggio beat="1" length="1")"),
                         "with on 60 1; on 64 1; wait 2; off 64; wait 3",
                         "0 0 90 60 1; 1 0 80 60 1; 1 0 90 64 1; 2 0 80 64 1; 2 0 90 60 1; 3 0 80 60 1; 3 0 90 60 1; 4 "
                         "0 80 60 1; 4 0 90 60 1; 5 0 80 60 1; 5 0 90 60 1; 6 0 80 60 1; 6 0 90 60 1"},
                    Case{"AReleasedNoteEndsInItsTime", layer(R"(UpArpeggio beat="4" length="3")"),
                         "on 60 7; off 60 9; wait 8", "0 0 90 60 7; 3 0 80 60 7"},
                    Case{"PressedAgainWhileItSoundsItStays", layer(R"(UpArpeggio beat="4" length="3")"),
                         "on 60 7; off 60; on 60 8; wait 5", "0 0 90 60 7; 3 0 80 60 7; 4 0 90 60 8; 7 0 80 60 8"},
                    Case{"TheNextHigherFollowsANoteThatIsLetGoInAGap", layer(R"(DownArpeggio beat="4" length="1")"),
                         "with on 60 1; with on 64 1; on 67 1; wait 1; off 64; wait 3",
                         "0 0 90 67 1; 1 0 80 67 1; 4 0 90 67 1; 5 0 80 67 1"},
                    Case{"ALowerNoteDoesNotMoveTheNextOne", layer(R"(UpArpeggio beat="4" length="1")"),
                         "with on 60 1; on 64 1; wait 1; on 50 1; wait 7",
                         "0 0 90 60 1; 1 0 80 60 1; 4 0 90 64 1; 5 0 80 64 1; 8 0 90 50 1; 9 0 80 50 1"},
                    Case{"TheGridLastsAsLongAsAnythingRuns",
                         layer(R"(UpArpeggio beat="4" length="2")", "", "maxNote=\"B3\"") +
                             layer(R"(UpArpeggio beat="6" length="2")", "", "minNote=\"C4\" channel=\"1\""),
                         "on 40 1; on 60 1; wait 5; off 40; wait 3; off 60; wait 5; on 60 1",
                         "0 0 90 40 1; 2 0 80 40 1; 4 0 90 40 1; 6 0 80 40 1; 6 0 91 60 1; 8 0 81 60 1; 17 0 91 60 1"},
                    Case{"AbsurdLengthsPlayTheirShortest", layer(R"(UpArpeggio beat="0" length="-5")"),
                         "on 60 1; wait 2; off 60",
                         "0 0 90 60 1; 1 0 80 60 1; 1 0 90 60 1; 2 0 80 60 1; 2 0 90 60 1; 3 0 80 60 1"},
                    Case{"AResetEndsAndForgets", layer(R"(UpArpeggio beat="2" length="2")"),
                         "on 60 1; wait 1; reset; wait 4; off 60; on 60 2", "0 0 90 60 1; - 0 80 60 100; 8 0 90 60 2"},
                    Case{"AnOutputThatClosesIsSilenced", layer(R"(UpArpeggio beat="2" length="2")"),
                         "on 60 1; output 0 off; wait 4; output 0 on; off 60; wait 3; on 62 1",
                         "0 0 90 60 1; - 0 80 60 100; 11 0 90 62 1"},
                    Case{"ThruOffKeepsBackWhatComesIn", layer(R"(UpArpeggio beat="2" length="1")"),
                         "on 60 1; wait 1; thru off; wait 1; thru on; wait 2",
                         "0 0 90 60 1; 1 0 80 60 1; 4 0 90 60 1; 5 0 80 60 1; 6 0 90 60 1"},
                    Case{"MonoHoldsOneNote", layer(R"(ChordArpeggio beat="2" length="1")", "", "mono=\"true\""),
                         "on 60 1; on 64 1; wait 3; off 64; wait 3",
                         "0 0 90 60 1; 1 0 80 60 1; 2 0 90 64 1; 3 0 80 64 1; 4 0 90 64 1; 5 0 80 64 1; 6 0 90 60 64; "
                         "7 0 80 60 64; 8 0 90 60 64"},
                    Case{"EachLayerEndsItsOwnNotes",
                         layer(R"(ChordArpeggio beat="4" length="1")") + layer(R"(ChordArpeggio beat="4" length="3")"),
                         "on 60 1; wait 4",
                         "0 0 90 60 1; 0 0 90 60 1; 1 0 80 60 1; 3 0 80 60 1; 4 0 90 60 1; 4 0 90 60 1"}),
    [](const auto& each) { return each.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Sequences, ArpeggioTest,
    testing::Values(
        Case{"AStepShiftsAccentsAndRests", layer(R"(ChordArpeggio beat="2" length="1")", "0,12 V5|-5,-"),
             "on 60 100; wait 6",
             "0 0 90 60 100; 1 0 80 60 100; 2 0 90 72 105; 2 0 90 55 100; 3 0 80 72 105; 3 0 80 55 100; 6 0 90 60 100"},
        Case{"AnOrderedKindMovesOnWithEachPass", layer(R"(UpArpeggio beat="1" length="1")", "0,12"),
             "with on 60 1; on 64 1; wait 4",
             "0 0 90 60 1; 1 0 80 60 1; 1 0 90 64 1; 2 0 80 64 1; 2 0 90 72 1; 3 0 80 72 1; 3 0 90 76 1; 4 0 80 76 1; "
             "4 0 90 60 1"},
        Case{"APassOfUpDownIsThereAndBack", layer(R"(UpDownArpeggio beat="1" length="1")", "0,12"),
             "with on 60 1; with on 64 1; on 67 1; wait 5",
             "0 0 90 60 1; 1 0 80 60 1; 1 0 90 64 1; 2 0 80 64 1; 2 0 90 67 1; 3 0 80 67 1; 3 0 90 64 1; 4 0 80 64 1; "
             "4 0 90 72 1; 5 0 80 72 1; 5 0 90 76 1"},
        Case{"AStepEndsANoteBeforeItsArpeggio", layer(R"(UpArpeggio beat="6" length="4")", "0 L2,0 L9"),
             "on 60 1; wait 10", "0 0 90 60 1; 2 0 80 60 1; 6 0 90 60 1; 10 0 80 60 1"},
        Case{"WithoutArpeggioAKeyPlaysTheStepOfItsTime", sequenceLayer("0|7,12"),
             "on 60 90; off 60 3; on 60 90; wait 480; on 62 90; off 62; off 60 5; on 60 90",
             "0 0 90 60 90; 0 0 90 67 90; 1 0 80 60 3; 1 0 80 67 3; 2 0 90 60 90; 2 0 90 67 90; 483 0 90 74 90; 484 0 "
             "80 74 64; 485 0 80 60 5; 485 0 80 67 5; 486 0 90 60 90; 486 0 90 67 90"},
        Case{"AKeyEndsWhatItBegan", sequenceLayer("0,12"), "on 60 90; wait 600; off 60",
             "0 0 90 60 90; 601 0 80 60 64"},
        Case{"ItsLengthEndsANoteBeforeItsKey", sequenceLayer("0 L3 V10"), "on 60 90; wait 5; off 60",
             "0 0 90 60 100; 3 0 80 60 100"},
        Case{"WithoutUseLengthItsKeyEndsIt", sequenceLayer("0 L3 V10", "useLength=\"false\""),
             "on 60 90; wait 5; off 60 10", "0 0 90 60 100; 6 0 80 60 20"},
        Case{"WithoutUseNoteAndUseVelocityOnlyRestsAreLeft",
             sequenceLayer("12 V9,-", "useNote=\"false\" useVelocity=\"false\""),
             "on 60 90; wait 479; with off 60; on 60 90", "0 0 90 60 90; 480 0 80 60 64; 480 0 90 60 90"},
        Case{"NotesAreFoldedVelocitiesClamped", sequenceLayer("-5 V-120|12 V40"), "with on 2 100; on 120 100",
             "0 0 90 9 0; 0 0 90 14 127; 0 0 90 115 0; 0 0 90 120 127"},
        Case{"OtherMessagesPass", sequenceLayer("-"), "cc 7 1; on 60 1; off 60; bend 0 64", "0 0 B0 7 1; 3 0 E0 0 64"},
        Case{"AnEmptySequenceLetsNotesPass", sequenceLayer(" "), "on 60 1; off 60 2", "0 0 90 60 1; 1 0 80 60 2"}),
    [](const auto& each) { return each.param.name; });

// A tick is ten units long; the key comes in three units behind the beginning of its tick.
TEST(ArpeggioHostTimeTest, TheBeatsKeepThePlaceWithinItsTickOfTheFirstNote) {
    EngineRig rig(layer(R"(UpArpeggio beat="4" length="2")") + sequenceLayer("0 L2", "useNote=\"true\""));
    const auto run = [&rig](int ticks) {
        for (; ticks > 0; --ticks) {
            rig.player.tick = {1000 + 10 * rig.tick, 1010 + 10 * rig.tick};
            rig.playTick();
        }
    };
    run(5);
    QelMidiMessage noteOn = eventOf("on 60 1");
    noteOn.setHostTime(1053);
    rig.engine.addPending(noteOn);
    run(6);
    // Sequence and arpeggio begin together, end two ticks later; the next beat is four ticks on.
    EXPECT_EQ(rig.takePlayed(), "5 0 90 60 1; 5 0 90 60 1; 7 0 80 60 1; 7 0 80 60 1; 9 0 90 60 1");
    EXPECT_EQ(rig.player.takeHostTimes(), (std::vector<std::int64_t>{1053, 1053, 1073, 1073, 1093}));
    rig.player.tick = {1110, 1112}; // ticks have become shorter: never beyond the tick
    rig.engine.sendReset();
    EXPECT_EQ(rig.player.takeHostTimes(), std::vector<std::int64_t>{1111});
    rig.player.tick = {};
    rig.run("off 60; on 62 1");
    EXPECT_EQ(rig.player.takeHostTimes(), (std::vector<std::int64_t>{-1, -1})); // no device
}

} // namespace
