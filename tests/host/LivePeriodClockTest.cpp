// The clock by a device's frames, on virtual time.
#include "host/LiveFakes.h"
#include "host/live/PeriodClock.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <utility>

namespace Host {
namespace {

using namespace std::chrono_literals;
using Backend::engineTimeOrigin;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

class PeriodClockTest : public ::testing::Test {
protected:
    void period(std::int64_t frame, std::int32_t frames, std::int64_t lastArrival = -1, std::uint32_t connection = 1) {
        clock.periodBegins({frame, frames, 48'000, lastArrival, connection, 0});
    }
    // Asks for each tick when what it plays leaves.
    void recordDues() {
        engine.onTick = [this](std::int32_t tick) { dues[tick] = clock.dueFrame(QelMidiMessage{}); };
    }
    VirtualTime time;
    FakeEngine engine{time};
    PeriodClock clock{engine, 120, time};
    std::map<std::int32_t, std::int64_t> dues;
};

TEST_F(PeriodClockTest, AGridOfTicksLeavesAsThatGridOfFramesWhateverThePeriod) {
    RandomCases cases;
    auto& random = cases.generator();
    for (const std::int32_t frames : {16, 64, 100, 128, 1024, 4096}) {
        SCOPED_TRACE(frames);
        VirtualTime ownTime;
        FakeEngine fresh(ownTime);
        fresh.dependent = true;
        PeriodClock periods(fresh, 137, ownTime);
        const std::int64_t latency = PeriodClock::latencyOf({0, frames});
        ASSERT_EQ(latency % frames, 0);
        const TickGrid ideal(48'000, engineTimeOrigin.count, 5000, 137);
        std::int32_t wrong = 0;
        fresh.onTick = [&](std::int32_t tick) {
            wrong += periods.dueFrame(QelMidiMessage{}) != ideal.timeOf(tick) + latency;
        };
        for (std::int64_t frame = 5000; frame < 5000 + 20 * 4096; frame += frames) {
            periods.periodBegins({frame, frames, 48'000, -1, 1, 0});
            if (random() % 8 == 0 && frame > 5000) {
                continue; // the clock wakes too late for this period
            }
            periods.round();
            ASSERT_GE(fresh.ticks.back() + 1, ideal.tickAt(frame + frames - 1)) << "all of the period is run in it";
        }
        EXPECT_EQ(wrong, 0);
        for (std::size_t i = 0; i < fresh.ticks.size(); ++i) {
            ASSERT_EQ(fresh.ticks[i], engineTimeOrigin.count + static_cast<std::int32_t>(i));
        }
        EXPECT_EQ(fresh.jumps, 0);
    }
}

TEST_F(PeriodClockTest, LatencyIsOnePeriodUnlessPeriodsAreShort) {
    EXPECT_EQ(PeriodClock::latencyOf({0, 64}), 64);
    EXPECT_EQ(PeriodClock::latencyOf({0, 1024}), 1024);
    EXPECT_EQ(PeriodClock::latencyOf({0, 32}), 64);
    EXPECT_EQ(PeriodClock::latencyOf({0, 16}), 64);
    EXPECT_EQ(PeriodClock::latencyOf({0, 64, 96'000}), 128);
}

TEST_F(PeriodClockTest, WhatCameInLeavesAtItsFramePlusTheLatency) {
    period(1000, 256);
    clock.round();
    QelMidiMessage message(MessageType::noteOn, 60, 100, 0, 0, -1, 0, {});
    message.setHostTime(1123);
    EXPECT_EQ(clock.dueFrame(message), 1123 + 256);
    message.setHostTime(-1);
    EXPECT_EQ(clock.dueFrame(message), PeriodClock::asSoonAsPossible) << "outside a tick";
}

TEST_F(PeriodClockTest, TicksWaitForWhatCameInWithTheirPeriod) {
    engine.dependent = true;
    recordDues();
    period(1000, 1024);
    clock.round();
    const std::size_t before = engine.ticks.size();
    period(2024, 1024, 2500);
    clock.round();
    EXPECT_EQ(engine.ticks.size(), before);
    clock.arrivalsTaken(2499); // not all of it yet
    clock.round();
    EXPECT_EQ(engine.ticks.size(), before);
    clock.arrivalsTaken(2500);
    clock.round();
    EXPECT_EQ(engine.ticks.back(), clock.tickAt(2024 + 1023).count);
    EXPECT_EQ(dues[engine.ticks.back()], 1000 + 50 * (engine.ticks.back() - engineTimeOrigin.count) + 1024);
}

// What came in early in a period may belong to the last tick of the period before.
TEST_F(PeriodClockTest, WhatBelongsToATickThatHasBeenRunIsPlayedInThatTick) {
    period(1000, 64);
    clock.round();
    const std::int32_t last = engine.ticks.back();
    period(1064, 64, 1064);
    clock.round();
    ASSERT_EQ(clock.tickAt(1064).count, last);
    engine.post("note");
    clock.eventsArrived();
    clock.arrivalsTaken(1064);
    clock.round();
    ASSERT_EQ(engine.played.size(), 1U);
    EXPECT_EQ(engine.played[0].tick, last);
    EXPECT_EQ(engine.ticks.back(), clock.tickAt(1064 + 63).count) << "and the period's own ticks are run as well";
}

TEST_F(PeriodClockTest, TellsTheTimesOfTheTickThatIsPlayed) {
    engine.dependent = true;
    period(1000, 256);
    const TickGrid ideal(48'000, engineTimeOrigin.count, 1000, 120);
    engine.onTick = [&](std::int32_t tick) {
        EXPECT_EQ(clock.tickTime().begin, ideal.timeOf(tick));
        EXPECT_EQ(clock.tickTime().end, ideal.timeOf(tick + 1));
    };
    clock.round();
    EXPECT_EQ(clock.tickTime().begin, -1);
}

TEST_F(PeriodClockTest, ButNotForEver) {
    period(1000, 1024);
    clock.round();
    period(2024, 1024, 2500);
    const auto begin = time.now();
    const std::size_t before = engine.ticks.size();
    while (engine.ticks.size() == before) {
        clock.round();
    }
    const auto waited = engine.tickTimes[before] - begin;
    EXPECT_GT(waited, 10ms); // half a period is 10.67 ms
    EXPECT_LT(waited, 11ms);
}

TEST_F(PeriodClockTest, WhatHasNoTimeIsPlayedAtOnceWhileNothingActsOnEachTick) {
    period(1000, 1024);
    clock.round();
    clock.round();
    const auto arrival = time.now() + 2ms;
    time.at(arrival, [&] {
        engine.post("key");
        clock.eventsArrived();
    });
    std::int64_t due = 0;
    engine.onTick = [&](std::int32_t) { due = clock.dueFrame(QelMidiMessage{}); };
    while (engine.played.empty()) {
        clock.round();
    }
    EXPECT_EQ(engine.played[0].time, arrival);
    EXPECT_EQ(due, PeriodClock::asSoonAsPossible);
}

TEST_F(PeriodClockTest, GoesOnAloneWhileTheDeviceIsSilentAndWithAnotherDeviceAfterwards) {
    engine.dependent = true;
    period(1'000'000, 64);
    clock.round();
    const auto silence = time.now();
    auto ticked = silence;
    std::chrono::nanoseconds longest{0};
    engine.onTick = [&](std::int32_t) { longest = std::max(longest, time.now() - std::exchange(ticked, time.now())); };
    while (time.now() < silence + 5s) {
        clock.round();
    }
    EXPECT_LT(longest, 100ms) << "nobody waits longer for a slice";
    EXPECT_NEAR(engine.ticks.back() - engineTimeOrigin.count, 5 * 960, 3);
    EXPECT_EQ(engine.jumps, 0);
    const std::int32_t last = engine.ticks.back();
    recordDues();
    period(300, 64, -1, 2); // its frames start anew
    clock.round();
    ASSERT_EQ(engine.ticks.back(), last + 2);
    EXPECT_EQ(dues[last + 1], 300 + 64);
    EXPECT_EQ(dues[last + 2], 350 + 64);
    for (std::size_t i = 0; i < engine.ticks.size(); ++i) {
        ASSERT_EQ(engine.ticks[i], engineTimeOrigin.count + static_cast<std::int32_t>(i));
    }
}

} // namespace
} // namespace Host
