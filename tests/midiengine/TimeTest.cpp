// Slices, pending events, and resets that wait for the clock.
#include "EngineRig.h"
#include "core/Barrier.h"
#include "midiengine/MidiEngineMessageManager.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

using Backend::engineTimeOrigin;
using Backend::Ticks;
using Backend::MidiEngine::MidiEngine;
using Backend::MidiEngine::QelMidiMessage;

QelMidiMessage at(int tick, const std::string& event) {
    QelMidiMessage message = eventOf(event);
    message.setPpq(engineTimeOrigin + Ticks{tick});
    return message;
}

TEST(MidiEngineTimeTest, MillisecondsBecomeTicksFromTheOriginOn) {
    EXPECT_EQ(MidiEngine::milliseconds2Ppq(1000.0, 120).count, 50'000'960);
    EXPECT_EQ(MidiEngine::milliseconds2Ppq(0.0, 120).count, 50'000'000);
    EXPECT_EQ(MidiEngine::milliseconds2Ppq(0.52, 120).count, 50'000'000);
    EXPECT_EQ(MidiEngine::milliseconds2Ppq(0.53, 120).count, 50'000'001);
    EXPECT_EQ(MidiEngine::milliseconds2Ppq(-1000.0, 60).count, 49'999'520);
}

TEST(MidiEngineTimeTest, ASliceOf4999TicksPlaysOneOf5000DoesNot) {
    EngineRig rig;
    rig.engine.addPending({at(0, "on 60 1"), at(4998, "on 61 1"), at(4999, "on 62 1")});
    rig.slice(0, 4999);
    EXPECT_EQ(rig.takePlayed(), "0 0 90 60 1; 4998 0 90 61 1");
    rig.engine.addPending(at(5000, "on 63 1"));
    rig.slice(4999, 9999);
    EXPECT_EQ(rig.takePlayed(), "");
    rig.slice(9999, 10'000); // what the machine slept through is played as soon as time goes on
    EXPECT_EQ(rig.takePlayed(), "9999 0 90 62 1; 9999 0 90 63 1");
}

TEST(MidiEngineTimeTest, EventsAheadWaitForTheirTick) {
    EngineRig rig;
    rig.engine.addPending({at(110, "on 61 1"), at(100, "on 60 1")});
    rig.slice(0, 100);
    EXPECT_EQ(rig.takePlayed(), "");
    EXPECT_TRUE(rig.engine.isBusy());
    rig.slice(100, 101);
    EXPECT_EQ(rig.takePlayed(), "100 0 90 60 1");
    rig.slice(101, 200);
    EXPECT_EQ(rig.takePlayed(), "110 0 90 61 1");
}

TEST(MidiEngineTimeTest, EventsOfOneTickKeepTheirOrderAcrossTicksTheirTimeDecides) {
    EngineRig rig;
    rig.engine.addPending({at(5, "cc 1 1"), at(4, "cc 2 1"), at(5, "cc 3 1")});
    rig.slice(0, 0);
    rig.engine.addPending({at(5, "cc 4 1"), at(4, "cc 5 1"), eventOf("cc 6 1"), eventOf("cc 7 1")});
    rig.slice(0, 10);
    rig.slice(10, 11);
    EXPECT_EQ(rig.takePlayed(), "4 0 B0 2 1; 4 0 B0 5 1; 5 0 B0 1 1; 5 0 B0 3 1; 5 0 B0 4 1; 10 0 B0 6 1; 10 0 B0 7 1");
}

TEST(MidiEngineTimeTest, UntimedEventsAreStampedWithTheEndOfTheSlice) {
    EngineRig rig;
    rig.engine.addPending(eventOf("on 60 1"));
    rig.slice(0, 480);
    EXPECT_EQ(rig.takePlayed(), "");
    rig.slice(480, 960);
    EXPECT_EQ(rig.takePlayed(), "480 0 90 60 1");
}

TEST(MidiEngineTimeTest, AnEmptySliceTakesInAndPlaysNothing) {
    EngineRig rig;
    rig.engine.addPending({at(3, "on 60 1"), eventOf("on 61 1")});
    rig.slice(7, 7);
    EXPECT_EQ(rig.takePlayed(), "");
    rig.slice(7, 8); // what came too late for its tick is played in the first one there is
    EXPECT_EQ(rig.takePlayed(), "7 0 90 60 1; 7 0 90 61 1");
    EXPECT_TRUE(rig.engine.isBusy()); // it sounds
}

TEST(MidiEngineTimeTest, ATickThatIsRunAgainPlaysOnlyWhatHasArrived) {
    EngineRig rig;
    rig.engine.addPending({at(7, "on 60 1"), at(8, "on 61 1")});
    rig.slice(7, 8);
    EXPECT_EQ(rig.takePlayed(), "7 0 90 60 1");
    for (const int note : {62, 63}) {
        rig.engine.addPending(eventOf("on " + std::to_string(note) + " 1"));
        rig.slice(7, 7);
        rig.slice(7, 8);
        EXPECT_EQ(rig.takePlayed(), "7 0 90 " + std::to_string(note) + " 1");
    }
    rig.slice(8, 9);
    EXPECT_EQ(rig.takePlayed(), "8 0 90 61 1");
}

// Between the two slices of a tick the first event arrives, the second when the tick is run again.
TEST(MidiEngineTimeTest, ATickThatIsRunAgainDoesNotLetLaterEventsOvertake) {
    EngineRig rig;
    rig.slice(7, 7);
    rig.engine.addPending(eventOf("on 60 1"));
    rig.slice(7, 8);
    rig.engine.addPending(eventOf("off 60"));
    rig.slice(7, 7);
    rig.slice(7, 8);
    rig.slice(8, 8);
    rig.slice(8, 9);
    EXPECT_EQ(rig.takePlayed(), "8 0 90 60 1; 8 0 80 60 64");
    rig.engine.addPending(eventOf("on 61 1"));
    rig.slice(1000, 1001);
    rig.slice(1001, 500);
    rig.engine.addPending(eventOf("off 61"));
    rig.slice(500, 500);
    rig.slice(500, 501);
    EXPECT_EQ(rig.takePlayed(), "1001 0 90 61 1; 500 0 80 61 64");
    rig.engine.addPending(eventOf("on 62 1")); // a clock that goes back without saying so
    rig.slice(300, 300);
    rig.slice(300, 301);
    EXPECT_EQ(rig.takePlayed(), "300 0 90 62 1");
}

// Handed in by one who is held up: first without a tick, then at ticks that have passed.
TEST(MidiEngineTimeTest, WhatComesTooLateForItsTickStaysBehindWhatCameBefore) {
    for (const bool inTheFirstSlice : {true, false}) {
        SCOPED_TRACE(inTheFirstSlice);
        EngineRig rig;
        const std::vector<QelMidiMessage> handedIn{at(2, "cc 1 1"), eventOf("cc 2 1"), at(4, "cc 3 1"),
                                                   at(3, "cc 4 1"), eventOf("cc 5 1"), at(9, "cc 6 1")};
        rig.engine.addPending(inTheFirstSlice ? handedIn : std::vector<QelMidiMessage>());
        rig.slice(7, 7);
        rig.engine.addPending(inTheFirstSlice ? std::vector<QelMidiMessage>() : handedIn);
        rig.slice(7, 8);
        rig.slice(8, 8);
        rig.slice(8, 10);
        EXPECT_EQ(rig.takePlayed(), inTheFirstSlice
                                        ? "7 0 B0 1 1; 7 0 B0 2 1; 7 0 B0 3 1; 7 0 B0 4 1; 7 0 B0 5 1; 9 0 B0 6 1"
                                        : "7 0 B0 1 1; 8 0 B0 2 1; 8 0 B0 3 1; 8 0 B0 4 1; 8 0 B0 5 1; 9 0 B0 6 1");
    }
}

TEST(MidiEngineTimeTest, WhenTimeGoesBackNothingIsLostThatWasDue) {
    EngineRig rig;
    rig.engine.addPending({at(1009, "cc 1 1"), at(1010, "cc 2 1"), at(499, "cc 3 1"), at(700, "cc 4 1")});
    rig.slice(1000, 500);
    EXPECT_EQ(rig.takePlayed(), "1000 0 B0 4 1; 1009 0 B0 1 1; 499 0 B0 3 1");
    rig.slice(500, 1010);
    EXPECT_EQ(rig.takePlayed(), "");
    rig.slice(1010, 1011);
    EXPECT_EQ(rig.takePlayed(), "1010 0 B0 2 1");
}

TEST(MidiEngineTimeTest, ManySlicesWithManyEventsKeepTheirOrder) {
    EngineRig rig;
    std::vector<QelMidiMessage> events;
    for (int i = 0; i < 30'000; ++i) { // an event far ahead keeps the queue from ever being empty
        events.push_back(at(i == 0 ? 40'000 : i, "cc 1 1"));
    }
    rig.engine.addPending(events);
    std::size_t played = 0;
    for (int tick = 0; tick < 30'000; tick += 100) {
        rig.slice(tick, tick + 100);
        for (const std::string& line : rig.player.takeLines()) {
            ASSERT_EQ(line, std::to_string(++played) + " 0 B0 1 1");
        }
    }
    EXPECT_EQ(played, 29'999U);
    EXPECT_TRUE(rig.engine.isBusy());
}

// The worker thread and blocking resets.

class EngineThreadTest : public testing::Test {
protected:
    EngineThreadTest() { rig.engine.initialize(0, true); }
    ~EngineThreadTest() override { rig.engine.end(); }

    // The clock of this test: empty slices until all that was posted has been handled, then the tick.
    void settle() {
        Backend::Barrier barrier([this] { rig.player.wake(); });
        manager().postBarrier(barrier);
        while (!barrier.isOpen()) {
            rig.player.wait();
            rig.slice(rig.tick, rig.tick);
        }
        rig.playTick();
    }
    Backend::MidiEngine::MidiEngineMessageManager& manager() { return rig.engine.getMessageManager(); }

    EngineRig rig;
};

TEST_F(EngineThreadTest, PostsActInTheirOrder) {
    manager().postSetLayerList(layersOf(R"(<Layer channel="1"/>)"));
    manager().postSetZoneMap(zonesOf("1:12"));
    manager().postSetDefaultMidiOutput(2);
    rig.engine.postPlayMidi(eventOf("on 60 1 zone=1"));
    settle();
    EXPECT_EQ(rig.takePlayed(), "0 2 91 72 1");
    manager().postSetZone(Backend::Zones::Zone{1, 5, {}, {}, false});
    manager().postSetMidiThru(false);
    manager().postPlayMidi({eventOf("off 60 zone=1"), eventOf("on 60 2 zone=1 in=-1"), at(5, "cc 7 9 in=-1")});
    manager().postSetTempo(99);
    manager().postSetTempoSource(3);
    manager().postEnableMidiInput(1, false);
    manager().postEnableMidiOutput(1, true);
    settle();
    EXPECT_EQ(rig.takePlayed(), "1 2 81 72 64; 1 2 91 65 2");
    const std::vector<std::string> requests = rig.player.takeRequests();
    ASSERT_GE(requests.size(), 4U);
    EXPECT_EQ(std::vector<std::string>(requests.end() - 4, requests.end()),
              (std::vector<std::string>{"tempo 99", "tempoSource 3", "input 1 off", "output 1 on"}));
}

TEST_F(EngineThreadTest, ANewLayerListWaitsForTheClockToEndWhatSounds) {
    rig.player.setTempoSource(2);
    rig.engine.postPlayMidi(eventOf("on 60 1"));
    settle();
    static_cast<void>(rig.player.takeRequests());
    manager().postSetLayerList(layersOf(R"(<Layer channel="1"/>)"));
    rig.engine.postPlayMidi(eventOf("on 60 2"));
    settle();
    EXPECT_EQ(rig.takePlayed(), "0 0 90 60 1; 1 0 80 60 100; 1 0 91 60 2");
    EXPECT_EQ(rig.player.takeRequests(), (std::vector<std::string>{"tempoSource 255", "tempoSource 2"}));
}

TEST_F(EngineThreadTest, ResetsOfSeveralThreadsEachComeBack) {
    std::atomic<int> done = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 6; ++i) {
        threads.emplace_back([&, i] {
            i % 2 == 0 ? manager().sendReset() : manager().sendHardReset();
            ++done;
            rig.player.wake();
        });
    }
    while (done < 6) {
        rig.player.wait();
        rig.slice(0, 0);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(rig.player.takeLines().size(), 3U * 33);
}

} // namespace
