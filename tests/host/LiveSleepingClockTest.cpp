// The clock by the system's time, on virtual time.
#include "host/LiveFakes.h"
#include "host/live/SleepingClock.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>

namespace Host {
namespace {

using namespace std::chrono_literals;
using Backend::engineTimeOrigin;

class SleepingClockTest : public ::testing::Test {
protected:
    void runTicks(SleepingClock& clock, std::size_t count) {
        while (engine.ticks.size() < count) {
            clock.round();
        }
    }
    VirtualTime time;
    FakeEngine engine{time};
};

TEST_F(SleepingClockTest, RunsEachTickOnceAtItsTimeOverTempoChanges) {
    RandomCases cases;
    auto& random = cases.generator();
    engine.dependent = true; // so that a repeated tick shows
    SleepingClock clock(engine, 120, time);
    const double start = static_cast<double>(time.now().count());
    std::vector<double> ideal{start};
    for (int change = 0; change < 50; ++change) {
        runTicks(clock, engine.ticks.size() + 1 + random() % 200);
        const int tempo = static_cast<int>(10 + random() % 491);
        while (ideal.size() < engine.ticks.size() + 1) {
            ideal.push_back(ideal.back() + 1.25e8 / clock.sync().tempo().beatsPerMinute());
        }
        clock.setTempo(tempo); // from the next tick on
    }
    for (std::size_t i = 0; i < engine.ticks.size(); ++i) {
        ASSERT_EQ(engine.ticks[i], engineTimeOrigin.count + static_cast<std::int32_t>(i));
        ASSERT_NEAR(static_cast<double>(engine.tickTimes[i].count()), ideal[i], 60) << "tick " << i;
    }
}

TEST_F(SleepingClockTest, WhatArrivesIsPlayedAtOnceWhileNothingActsOnEachTick) {
    SleepingClock clock(engine, 10, time); // 12.5 ms a tick
    runTicks(clock, 3);
    const auto arrival = time.now() + 3ms;
    time.at(arrival, [&] {
        engine.post("note");
        clock.eventsArrived();
    });
    while (engine.played.empty()) {
        clock.round();
    }
    EXPECT_EQ(engine.played[0].time, arrival);
    EXPECT_EQ(engine.played[0].tick, engine.ticks.back());
    runTicks(clock, 10);
    EXPECT_EQ(engine.played.size(), 1u);
    EXPECT_EQ(engine.ticks.back(), engineTimeOrigin.count + 9) << "running a tick again is not a tick more";
}

TEST_F(SleepingClockTest, WhatArrivesWaitsForTheNextTickWhileSomethingActsOnEach) {
    engine.dependent = true;
    SleepingClock clock(engine, 10, time);
    runTicks(clock, 3);
    std::int32_t last = 0;
    time.at(time.now() + 3ms, [&] {
        last = engine.ticks.back();
        engine.post("note");
        clock.eventsArrived();
    });
    while (engine.played.empty()) {
        clock.round();
    }
    EXPECT_EQ(engine.played[0].tick, last + 1);
    EXPECT_EQ(engine.ticks.back(), last + 1);
}

TEST_F(SleepingClockTest, WhoWaitsForASliceGetsAnEmptyOneAtOnce) {
    engine.dependent = true;
    SleepingClock clock(engine, 10, time);
    runTicks(clock, 3);
    std::size_t ticks = 0;
    const auto request = time.now() + 1ms;
    time.at(request, [&] {
        ticks = engine.ticks.size();
        engine.slices.clear();
        clock.wake();
    });
    while (time.now() < request || engine.slices.empty()) {
        clock.round();
    }
    EXPECT_EQ(time.now(), request);
    EXPECT_EQ(engine.slices.front().first, engine.slices.front().second);
    EXPECT_EQ(engine.ticks.size(), ticks);
}

TEST_F(SleepingClockTest, AShortDelayIsMadeUpFor) {
    SleepingClock clock(engine, 120, time);
    runTicks(clock, 10);
    time.pass(900ms);
    clock.round();
    EXPECT_EQ(engine.jumps, 0);
    EXPECT_GT(engine.ticks.size(), 860u);
    for (std::size_t i = 1; i < engine.ticks.size(); ++i) {
        ASSERT_EQ(engine.ticks[i], engine.ticks[i - 1] + 1);
    }
}

TEST_F(SleepingClockTest, AfterTheMachinesSleepOneSliceIsSkippedAndThePhaseKept) {
    for (const auto slept : {1500ms, 3600'000ms}) {
        SCOPED_TRACE(slept.count());
        FakeEngine fresh(time);
        SleepingClock clock(fresh, 120, time);
        const auto start = time.now();
        while (fresh.ticks.size() < 10) {
            clock.round();
        }
        time.pass(slept);
        clock.round();
        EXPECT_EQ(fresh.jumps, 1);
        EXPECT_EQ(fresh.ticks.size(), 11u) << "ticks of the sleep must not be played";
        const double passed = static_cast<double>((time.now() - start).count());
        const auto expected = static_cast<std::int32_t>(passed * 960 / 1e9);
        EXPECT_NEAR(fresh.ticks.back() - engineTimeOrigin.count, expected, 1);
        for (int i = 0; i < 5; ++i) {
            clock.round();
        }
        EXPECT_EQ(fresh.jumps, 1);
    }
}

TEST_F(SleepingClockTest, TimeStartsAgainBefore32BitsAreFull) {
    TickRunner runner(engine, 1000, 0, 500); // four ticks a unit
    const std::int64_t nearlyFull = (std::int64_t{TickRunner::lastTick} - engineTimeOrigin.count) / 4 - 2;
    runner.runUntil(nearlyFull);
    EXPECT_EQ(engine.jumps, 1);
    engine.ticks.clear();
    runner.runUntil(nearlyFull + 10);
    EXPECT_EQ(engine.jumps, 2);
    ASSERT_GE(engine.ticks.size(), 30u);
    std::int32_t previous = engine.ticks.front();
    for (std::size_t i = 1; i < engine.ticks.size(); ++i) {
        ASSERT_EQ(engine.ticks[i], previous == TickRunner::lastTick ? engineTimeOrigin.count : previous + 1);
        previous = engine.ticks[i];
    }
    EXPECT_LT(runner.lastRun().count, engineTimeOrigin.count + 100);
}

} // namespace
} // namespace Host
