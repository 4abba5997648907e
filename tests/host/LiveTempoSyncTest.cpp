// Clocks in step with a tempo source, on virtual time.
#include "host/LiveFakes.h"
#include "host/live/PeriodClock.h"
#include "host/live/SleepingClock.h"
#include "support/RandomCases.h"

#include <cmath>
#include <gtest/gtest.h>

namespace Host {
namespace {

using namespace std::chrono_literals;
using Backend::engineTimeOrigin;
using std::chrono::nanoseconds;

MidiBytes bytesOf(std::uint8_t status, int position = 0) {
    return {{status, static_cast<std::uint8_t>(position & 0x7F), static_cast<std::uint8_t>(position >> 7)},
            static_cast<std::uint8_t>(status == 0xF2 ? 3 : 1)};
}

class TransportEngine final : public ClockedEngine {
public:
    explicit TransportEngine(TimeSource& time) : engine(time) { engine.dependent = true; }
    void playTimeSlice(Backend::Ticks from, Backend::Ticks to) override { engine.playTimeSlice(from, to); }
    [[nodiscard]] bool isTickDependent() override { return true; }
    void timeJumped() override { engine.timeJumped(); }
    void transportChanged(Transport transport, std::int32_t sixteenth) override {
        transports.push_back(static_cast<int>(transport) * 1000 + sixteenth);
    }

    FakeEngine engine;
    std::vector<int> transports; // 1000 x what + sixteenth
};

class SleepingSyncTest : public ::testing::Test {
protected:
    // Clocks at a tempo for so many beats, late by up to `jitter`; then the clock has run up to the last of them.
    void beats(double tempo, int count, nanoseconds jitter = 0ns) {
        const nanoseconds period{static_cast<std::int64_t>(2.5e9 / tempo)};
        for (int i = 0; i < count * 24; ++i) {
            sent += period;
            const nanoseconds late{random.number<std::int64_t>(0, jitter.count())};
            time.at(sent + late, [this] { static_cast<void>(clock.arrived(1, bytesOf(0xF8))); });
        }
        runTo(sent + jitter);
    }
    void runTo(nanoseconds end) {
        while (time.now() < end) {
            clock.round();
        }
    }
    // How far the ticks are from having a multiple of 20 on the ideal clock that was sent last, in ticks.
    [[nodiscard]] double phaseError(nanoseconds lateness = 0ns) {
        const auto& times = engine.engine.tickTimes;
        std::size_t i = times.size() - 1;
        while (i > 0 && times[i] > sent + lateness) {
            --i;
        }
        const double part = static_cast<double>((sent + lateness - times[i]).count()) /
                            static_cast<double>((times[i] - times[i - 1]).count());
        return std::remainder(engine.engine.ticks[i] - engineTimeOrigin.count + part, 20);
    }
    [[nodiscard]] double tempo() const { return clock.sync().tempo().beatsPerMinute(); }

    RandomCases random;
    VirtualTime time;
    TransportEngine engine{time};
    SleepingClock clock{engine, 120, time};
    nanoseconds sent = 1s;
};

TEST_F(SleepingSyncTest, TicksComeToStandOnTheClocks) {
    clock.sync().follow(2);
    for (const double each : {133.7, 60.0, 1000.0, 240.0}) {
        SCOPED_TRACE(each);
        beats(each, 2);
        EXPECT_NEAR(tempo(), each, each * 2e-3);
        beats(each, 3);
        EXPECT_NEAR(phaseError(), 0, 1);
        beats(each, 4);
        EXPECT_NEAR(phaseError(), 0, 0.5);
    }
    EXPECT_EQ(engine.engine.jumps, 0);
    const auto& ticks = engine.engine.ticks;
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        ASSERT_EQ(ticks[i], engineTimeOrigin.count + static_cast<std::int32_t>(i)) << "each once, in order";
    }
}

TEST_F(SleepingSyncTest, JitterIsSmoothed) {
    clock.sync().follow(2);
    beats(120, 8, 2ms);
    double worst = 0;
    for (int i = 0; i < 12; ++i) {
        beats(120, 1, 2ms);
        worst = std::max(worst, std::abs(phaseError(1ms)));
    }
    EXPECT_LT(worst, 1);
    EXPECT_NEAR(tempo(), 120, 0.5);
}

TEST_F(SleepingSyncTest, WithoutASourceClocksAreMessagesLikeOthers) {
    EXPECT_FALSE(clock.arrived(1, bytesOf(0xF8)));
    clock.sync().follow(2);
    EXPECT_TRUE(clock.arrived(1, bytesOf(0xF8)));
    EXPECT_FALSE(clock.arrived(0, bytesOf(0xF8))) << "of another input";
    EXPECT_FALSE(clock.arrived(1, bytesOf(0xFA))) << "for others, too";
    EXPECT_FALSE(clock.arrived(1, bytesOf(0xFE)));
}

TEST_F(SleepingSyncTest, SilenceIsNoticedAndTheTempoKeptUntilAnotherIsSet) {
    clock.sync().follow(2);
    beats(150, 6);
    EXPECT_TRUE(clock.sync().isLocked());
    runTo(sent + 500ms);
    EXPECT_FALSE(clock.sync().isLocked());
    runTo(sent + 3s);
    EXPECT_NEAR(tempo(), 150, 0.01);
    const auto& times = engine.engine.tickTimes;
    EXPECT_NEAR(static_cast<double>((times.back() - times[times.size() - 1001]).count()), 1e12 / 1200, 1e6);
    clock.setTempo(90);
    runTo(sent + 3100ms);
    EXPECT_EQ(tempo(), 90);
    sent = time.now();
    beats(133, 4);
    clock.setTempo(100); // as a program may while the source is heard
    beats(133, 1);
    EXPECT_NEAR(tempo(), 133, 0.1);
    clock.sync().follow(TempoSync::noSource);
    runTo(time.now() + 100ms);
    EXPECT_EQ(tempo(), 100);
}

TEST_F(SleepingSyncTest, TheTransportIsPassedOn) {
    clock.sync().follow(2);
    beats(120, 3);
    const auto send = [this](const MidiBytes& bytes) {
        static_cast<void>(clock.arrived(1, bytes));
        runTo(time.now() + 2ms);
    };
    send(bytesOf(0xFA));
    beats(120, 2);
    send(bytesOf(0xFC));
    send(bytesOf(0xFB));
    send(bytesOf(0xFC));
    send(bytesOf(0xF2, 300));
    send(bytesOf(0xFB));
    EXPECT_EQ(engine.transports, (std::vector<int>{0, 2008, 1008, 2008, 1300}));
    beats(120, 4);
    EXPECT_NEAR(phaseError(), 0, 1);
}

TEST(PeriodSync, TicksStandOnTheFramesOfTheClocksWhateverThePeriod) {
    for (const std::int32_t frames : {64, 1024}) {
        for (const double tempo : {120.0, 133.0, 133.7}) {
            SCOPED_TRACE(std::to_string(frames) + " frames, " + std::to_string(tempo));
            VirtualTime time;
            TransportEngine engine(time);
            PeriodClock clock(engine, 120, time);
            clock.sync().follow(1);
            std::vector<std::int64_t> clocks;
            double next = 3000;
            std::map<std::int32_t, std::int64_t> dues;
            engine.engine.onTick = [&](std::int32_t tick) { dues[tick] = clock.dueFrame({}); };
            for (std::int64_t frame = 0; frame < 20 * 48'000; frame += frames) {
                for (; next < static_cast<double>(frame + frames); next += 48'000 * 2.5 / tempo) {
                    clocks.push_back(static_cast<std::int64_t>(next));
                    EXPECT_TRUE(clock.sync().arrived(0, bytesOf(0xF8), clocks.back()));
                }
                clock.periodBegins({frame, frames, 48'000, -1, 1, 0, {}});
                clock.round();
            }
            std::int64_t worst = 0;
            for (const auto& [tick, due] : dues) {
                if ((tick - engineTimeOrigin.count) % 20 != 0 || due < 10 * 48'000) {
                    continue;
                }
                const std::int64_t at = due - PeriodClock::latencyOf({0, frames});
                const auto after = std::lower_bound(clocks.begin(), clocks.end(), at - 500);
                if (after != clocks.end() && at < 19 * 48'000) {
                    worst = std::max(worst, std::abs(*after - at));
                }
            }
            EXPECT_LE(worst, 1) << "frames";
            EXPECT_NEAR(clock.sync().tempo().beatsPerMinute(), tempo, 0.002);
        }
    }
}

TEST(PeriodSync, FollowsATransport) {
    VirtualTime time;
    TransportEngine engine(time);
    PeriodClock clock(engine, 120, time);
    clock.sync().follow(TempoSync::jackTransport);
    std::int64_t frame = 0;
    double beats = 0;
    std::map<std::int32_t, double> beatsOfTicks;
    const auto run = [&](double seconds, bool rolls, double tempo) {
        for (const std::int64_t end = frame + static_cast<std::int64_t>(seconds * 48'000); frame < end; frame += 256) {
            const double grain = std::floor(beats * 1920) / 1920; // as a master tells it
            clock.periodBegins({frame, 256, 48'000, -1, 1, 0, {rolls, tempo > 0, tempo, grain}});
            engine.engine.onTick = [&](std::int32_t tick) {
                const auto at = static_cast<double>(clock.dueFrame({}) - 256 - frame);
                beatsOfTicks[tick] = beats + at / 48'000 * tempo / 60;
            };
            clock.round();
            beats += rolls ? 256.0 / 48'000 * tempo / 60 : 0;
        }
    };
    run(1, false, 0);
    EXPECT_FALSE(clock.sync().isLocked());
    EXPECT_EQ(clock.sync().tempo(), Tempo(120));
    run(5, true, 133.7);
    EXPECT_TRUE(clock.sync().isLocked());
    EXPECT_EQ(clock.sync().tempo(), Tempo::of(133.7));
    beatsOfTicks.clear();
    run(10, true, 133.7);
    for (const auto& [tick, place] : beatsOfTicks) {
        ASSERT_NEAR(std::remainder(tick - engineTimeOrigin.count - place * 480, 20), 0, 1) << tick;
    }
    run(1, false, 133.7);
    beats = 100.3;
    run(4, true, 90);
    EXPECT_EQ(engine.transports, (std::vector<int>{0, 2000 + static_cast<int>(15 * 133.7 / 15), 1401}));
    beatsOfTicks.clear();
    run(4, true, 90);
    for (const auto& [tick, place] : beatsOfTicks) {
        ASSERT_NEAR(std::remainder(tick - engineTimeOrigin.count - place * 480, 20), 0, 1) << tick;
    }
    EXPECT_EQ(engine.engine.jumps, 0);
}

} // namespace
} // namespace Host
