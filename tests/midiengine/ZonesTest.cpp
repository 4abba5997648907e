// Zones, the direct road, thru, ports and resets.
#include "EngineRig.h"
#include "midiengine/EngineTap.h"

#include <gtest/gtest.h>
#include <ostream>

namespace {

struct Case {
    const char* name;
    const char* zones;
    const char* steps;
    const char* played; // "TICK OUTPUT STATUS D1 D2"
};
void PrintTo(const Case& row, std::ostream* out) {
    *out << row.steps;
}

class RoutingTest : public testing::TestWithParam<Case> {};

TEST_P(RoutingTest, Plays) {
    EngineRig rig("<Layer/>", GetParam().zones);
    EXPECT_EQ(rig.play(GetParam().steps), GetParam().played);
}

INSTANTIATE_TEST_SUITE_P(
    , RoutingTest,
    testing::Values(
        // Zones.
        Case{"AZoneTransposesItsNotesOnly", "1:12", "on 60 1 zone=1; on 60 1; cc 60 1 zone=1; on 60 1 zone=2 in=1",
             "0 0 90 72 1; 1 0 90 60 1; 2 0 B0 60 1; 3 0 90 60 1"},
        Case{"TransposedNotesFold", "1:20 2:-20 3:127 4:-127",
             "on 120 1 zone=1; on 5 1 zone=2; on 127 1 zone=3; on 0 1 zone=4",
             "0 0 90 116 1; 1 0 90 9 1; 2 0 90 122 1; 3 0 90 5 1"},
        Case{"ANoteEndsAsItBegan", "1:20", "on 120 1 zone=1; zone 1 -3; off 120 zone=1; on 120 1 zone=1",
             "0 0 90 116 1; 2 0 80 116 64; 3 0 90 117 1"},
        Case{"SeveralPressesEndInTheirOrder", "1:0",
             "on 60 1 zone=1; zone 1 2; on 60 2 zone=1; off 60 zone=1; off 60 zone=1",
             "0 0 90 60 1; 2 0 90 62 2; 3 0 80 60 64; 4 0 80 62 64"},
        Case{"ThenItIsForgotten", "1:5", "on 60 1 zone=1; off 60 zone=1; off 60 zone=1",
             "0 0 90 65 1; 1 0 80 65 64; 2 0 80 60 64"},
        Case{"AnotherSourceOfTheZoneEndsIt", "1:5", "on 60 1 zone=1; off 60 zone=1 in=1", "0 0 90 65 1; 1 0 80 65 64"},
        Case{"AnUnknownZoneChangesNothing", "1:5", "zone 2 7; on 60 1 zone=2", "1 0 90 60 1"},
        Case{"AfterANewMapTheNoteOffIsUntransposedAndTheNoteEnds", "1:5",
             "on 60 1 zone=1; zones 1:7; off 60 zone=1; on 60 2 zone=1",
             "0 0 90 65 1; 2 0 80 60 64; 2 0 80 65 64; 3 0 90 67 2"},
        Case{"AlsoWhenTheZoneIsGone", "1:5", "on 60 1 zone=1; zones; off 60 zone=1",
             "0 0 90 65 1; 2 0 80 60 64; 2 0 80 65 64"},
        Case{"AlsoOnTheDirectRoad", "1:5", "on 60 1 zone=1 ch=3; zones; default 1; off 60 zone=1 ch=3",
             "0 0 93 65 1; 3 0 83 60 64; 3 0 83 65 64"},
        // The direct road.
        Case{"OutputOrChannelPassesTheLayersBy", "", "on 60 1 out=2; on 60 1 ch=5; cc 7 1 out=1 ch=4; bend 0 64 out=1",
             "0 2 90 60 1; 1 0 95 60 1; 2 1 B4 7 1; 3 1 E0 0 64"},
        Case{"ToAPortThatIsNotThere", "",
             "on 60 1 out=3; on 60 1 out=-2; default 3; cc 7 1 ch=1; output 1 off; cc 1 1 out=1", ""},
        Case{"EachNoteOffGoesOut", "", "on 60 1 out=1; on 60 1 out=1 in=1; off 60 out=1; off 60 out=1 in=1",
             "0 1 90 60 1; 1 1 90 60 1; 2 1 80 60 64; 3 1 80 60 64"},
        Case{"ItEndsOnTheOutputWhereItBegan", "", "on 60 1 ch=2; default 1; off 60 ch=2; off 60 ch=2",
             "0 0 92 60 1; 2 0 82 60 64; 3 1 82 60 64"},
        Case{"ItKeepsAHeldNoteOfALayer", "", "on 60 1; on 60 1 out=0; off 60; off 60 out=0",
             "0 0 90 60 1; 1 0 90 60 1; 3 0 80 60 64"},
        // Thru.
        Case{"WithoutThruWhatComesInDoesNotGoOut", "", "thru off; on 60 1; cc 7 1; off 60; on 61 1 in=-1; cc 7 2 in=-1",
             "4 0 90 61 1; 5 0 B0 7 2"},
        Case{"ANoteThatWentOutIsEndedAllTheSame", "", "on 60 1; on 61 1 out=1; thru off; off 60; off 61 out=1; off 62",
             "0 0 90 60 1; 1 1 90 61 1; 3 0 80 60 64; 4 1 80 61 64"},
        Case{"AnUnheardNoteHoldsNobody", "", "on 60 1; thru off; on 60 1 in=1; off 60; off 60 in=1",
             "0 0 90 60 1; 3 0 80 60 64"},
        Case{"AnUnheardEndTakesNobodysNote", "", "on 60 1 out=1; thru off; off 60 out=1 in=1; reset",
             "0 1 90 60 1; - 1 80 60 100"},
        // Ports.
        Case{"AnOutputThatClosesIsSilenced", "",
             "on 60 1; on 61 1 out=1; output 0 off; off 60; off 61 out=1; output 0 on; on 60 2",
             "0 0 90 60 1; 1 1 90 61 1; - 0 80 60 100; 4 1 80 61 64; 6 0 90 60 2"},
        Case{"AnOutputThatVanishesIsForgotten", "", "on 60 1; unplug 0; default 1; plug 0; reset; on 60 2; off 60",
             "0 0 90 60 1; 5 1 90 60 2; 6 1 80 60 64"},
        Case{"AnInputThatClosesLetsGo", "", "on 60 1; on 61 1 in=1; on 62 1 out=2; input 0 off; off 61 in=1",
             "0 0 90 60 1; 1 0 90 61 1; 2 2 90 62 1; - 0 80 60 100; - 2 80 62 100; 4 0 80 61 64"},
        // Resets.
        Case{"AResetEndsEachNoteOnce", "1:12",
             "on 60 1; on 60 1 in=1; on 60 1 zone=1; on 40 1 out=2 ch=15; reset; reset; off 60 zone=1",
             "0 0 90 60 1; 1 0 90 60 1; 2 0 90 72 1; 3 2 9F 40 1; - 0 80 60 100; - 0 80 72 100; - 2 8F 40 100; 6 0 80 "
             "60 64"}),
    [](const testing::TestParamInfo<Case>& row) { return row.param.name; });

TEST(MidiEngineTest, AHardResetEndsWithTheControllersOfTheDefaultOutput) {
    EngineRig rig;
    std::string expected = "0 0 90 60 1; - 0 80 60 100";
    for (const char* channel : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "A", "B", "C", "D", "E", "F"}) {
        for (const char* controller : {"120", "121"}) {
            expected += std::string("; - 1 B") + channel + " " + controller + " 0";
        }
    }
    EXPECT_EQ(rig.play("on 60 1; default 1; hardreset"), expected + "; - 1 FF");
}

TEST(MidiEngineTest, WhatIsNoMidiIsDroppedAndCounted) {
    EngineRig rig;
    using Backend::MidiEngine::MessageType;
    using Backend::MidiEngine::MidiMessage;
    const auto packed = [](std::uint64_t bytes) { return Backend::MidiEngine::QelMidiMessage(bytes); };
    rig.playTick({packed(0x10003C90), packed(0x00003C00), packed(0x00008090), packed(0x00803C90)});
    EXPECT_EQ(rig.takePlayed(), "");
    EXPECT_EQ(rig.engine.droppedEvents(), 4U);
    rig.playTick({packed(0x00000BF8), packed(0xFF647F90)}); // a message without data; any channel
    EXPECT_EQ(rig.takePlayed(), "1 0 F8; 1 0 90 127 100");
}

// Everything a device that sends no Note Off can do.
TEST(MidiEngineTest, HeldNotesBeyondMeasureAreEndedOldestFirst) {
    EngineRig rig("<Layer/><Layer channel=\"1\" minVelocity=\"1\"/>", "1:3");
    for (int i = 0; i < 20'000; ++i) {
        rig.run("on " + std::to_string(i % 100) + " 9 zone=1 in=" + std::to_string(i % 2));
        if (i % 777 == 0) {
            rig.run("default " + std::to_string(i % 3));
        }
    }
    for (int i = 0; i < 20'000; ++i) {
        rig.run("off " + std::to_string(i % 100) + " zone=1 in=" + std::to_string(i % 2));
    }
    EXPECT_EQ(rig.player.sounding(), std::set<TestSupport::Sound>{});
}

TEST(MidiEngineTest, TapsAndTheControlFollowerSeeWhatPasses) {
    struct Tap final : Backend::MidiEngine::EngineTap {
        std::string seen;
        void passed(const Backend::MidiEngine::QelMidiMessage& message, bool swallowed) override {
            seen += (seen.empty() ? "" : "; ") + TestSupport::lineOf(message) + (swallowed ? " swallowed" : "");
        }
    };
    EngineRig rig(R"(<Layer output="1" channel="1"/>)");
    Tap tap;
    Tap follower;
    rig.engine.addTap(tap);
    rig.engine.setControlFollower(&follower);
    rig.run("on 60 1; on 60 1 in=1; off 60; thru off; cc 7 9; cc 8 9 out=2");
    EXPECT_EQ(tap.seen, "0 1 91 60 1; 1 1 91 60 1; 2 1 81 60 64 swallowed; 4 1 B1 7 9; 5 2 B0 8 9");
    EXPECT_EQ(follower.seen, "4 -1 B0 7 9; 5 2 B0 8 9"); // as they were addressed
    rig.engine.removeTap(tap);
    rig.engine.setControlFollower(nullptr);
    rig.run("cc 7 9");
    EXPECT_EQ(tap.seen.find("7 9", tap.seen.find("8 9")), std::string::npos);
}

} // namespace
