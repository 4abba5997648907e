// Following the MIDI clock of another device, on virtual time.
#include "host/live/ClockFollower.h"
#include "support/RandomCases.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace Host {
namespace {

constexpr std::int64_t second = 1'000'000'000;

// A sender whose clocks are late by up to `jitter` seconds, or come with the next of a period of that many.
class Sender {
public:
    explicit Sender(ClockFollower& follower) : follower_(follower) {}

    void setTempo(double beatsPerMinute) { period_ = 60.0 / 24 / beatsPerMinute; }
    void clock() {
        ideal_ += period_;
        ++sent_;
        double heard = ideal_ + jitter * random_.number(0, 1'000'000) / 1e6;
        heard = grain > 0 ? std::ceil(heard / grain) * grain : heard;
        heard = std::max(heard, heldUntil);
        last_ = std::max(last_, static_cast<std::int64_t>(heard * second));
        if (!lose) {
            follower_.clock(last_);
        }
    }
    void clocks(int count) {
        for (; count > 0; --count) {
            clock();
        }
    }
    void pause(double seconds) { ideal_ += seconds; }
    [[nodiscard]] double now() const { return ideal_; }
    [[nodiscard]] std::int64_t heard() const { return last_; }
    // How far the follower is from the ideal clocks now, in clocks, up to a constant that jitter makes.
    [[nodiscard]] double error() const {
        return follower_.clocksAt(static_cast<std::int64_t>(ideal_ * second)) - static_cast<double>(sent_);
    }

    double jitter = 0;
    double grain = 0;
    double heldUntil = 0; // what is sent before is heard then
    bool lose = false;

private:
    ClockFollower& follower_;
    RandomCases random_;
    double period_ = 60.0 / 24 / 120;
    double ideal_ = 1;
    std::int64_t sent_ = -1;
    std::int64_t last_ = 0;
};

class ClockFollowerTest : public ::testing::Test {
protected:
    ClockFollower follower{second};
    Sender sender{follower};
};

constexpr double tick = 1.0 / 20; // of a clock

TEST_F(ClockFollowerTest, KnowsTheTempoWithinTwoBeatsAndThePhaseWithinATickAfterFour) {
    struct Row {
        const char* name;
        double tempo;
        double jitter; // seconds
        double grain;
        double tempoError; // after two beats, beats a minute
        double phaseError; // after four, clocks
    };
    const Row rows[] = {
        {"even", 120, 0, 0, 1e-4, 1e-6},
        {"133.7", 133.7, 0, 0, 1e-4, 1e-6},
        {"frames", 133, 0, 1 / 48000.0, 0.01, 0.01},
        {"a millisecond of jitter", 120, 0.001, 0, 0.2, tick},
        {"two milliseconds", 120, 0.002, 0, 0.4, tick},
        {"four milliseconds", 120, 0.004, 0, 1, 2 * tick},
        {"a sender that speaks once a period of 1024 frames", 133.7, 0, 1024 / 48000.0, 3, 4 * tick},
        {"10 BPM", 10, 0.001, 0, 0.02, tick},
        {"500 BPM", 500, 0.0005, 0, 4, tick},
        {"1000 BPM", 1000, 0.0002, 0, 8, tick},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ClockFollower fresh(second);
        Sender each(fresh);
        each.setTempo(row.tempo);
        each.jitter = row.jitter;
        each.grain = row.grain;
        each.clocks(5);
        EXPECT_FALSE(fresh.isLocked());
        each.clocks(43);
        EXPECT_TRUE(fresh.isLocked());
        EXPECT_NEAR(fresh.tempo(), row.tempo, row.tempoError);
        each.clocks(48);
        const double late = (row.jitter + row.grain) / 2 * row.tempo * 24 / 60; // on average
        double worst = 0;
        for (int i = 0; i < 960; ++i) {
            each.clock();
            worst = std::max(worst, std::abs(each.error() + late));
        }
        EXPECT_LT(worst, row.phaseError);
    }
}

TEST_F(ClockFollowerTest, FollowsATempoStepWithoutLosingAClock) {
    struct Row {
        double from;
        double to;
        double jitter;
    };
    const Row rows[] = {{120, 133, 0},  {133, 120, 0.001}, {120, 121, 0},    {120, 60, 0},     {60, 120, 0.001},
                        {100, 1000, 0}, {1000, 100, 0},    {140, 70, 0.001}, {90, 270, 0.0005}};
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.from) + " to " + std::to_string(row.to));
        ClockFollower fresh(second);
        Sender each(fresh);
        each.jitter = row.jitter;
        each.setTempo(row.from);
        each.clocks(200);
        each.setTempo(row.to);
        each.clocks(48);
        EXPECT_NEAR(fresh.tempo(), row.to, row.to * (row.jitter > 0 ? 0.01 : 1e-3));
        each.clocks(48);
        EXPECT_NEAR(each.error(), 0, row.jitter > 0 ? 2 * tick : 0.1 * tick);
        EXPECT_EQ(fresh.phase(), 1U);
    }
}

TEST_F(ClockFollowerTest, ClocksThatAreLostOnTheWayMoveNothing) {
    for (const double jitter : {0.0, 0.001}) {
        ClockFollower fresh(second);
        Sender each(fresh);
        each.jitter = jitter;
        each.clocks(100);
        RandomCases random;
        for (int i = 0; i < 200; ++i) {
            each.lose = true;
            each.clocks(random.number(1, 2));
            each.lose = false;
            each.clocks(random.number(24, 60));
        }
        each.clocks(20);
        EXPECT_NEAR(each.error(), 0, jitter > 0 ? tick : 0.01 * tick);
        EXPECT_NEAR(fresh.tempo(), 120, jitter > 0 ? 0.2 : 1e-3);
    }
}

TEST_F(ClockFollowerTest, OneThatIsHeldUpMovesNothing) {
    sender.clocks(100);
    for (const double late : {0.002, 0.009, 0.001, 0.016}) {
        sender.jitter = late;
        sender.clock();
        sender.jitter = 0;
        EXPECT_NEAR(sender.error(), 0, 0.1 * tick);
        sender.clocks(10);
        EXPECT_NEAR(sender.error(), 0, 0.1 * tick);
        EXPECT_NEAR(follower.tempo(), 120, 1e-2);
    }
}

TEST_F(ClockFollowerTest, StallsAndBurstsLoseNoClock) {
    RandomCases random;
    for (const double jitter : {0.0, 0.0005}) {
        ClockFollower fresh(second);
        Sender each(fresh);
        each.jitter = jitter;
        each.clocks(200);
        for (int i = 0; i < 200; ++i) {
            for (int stalls = random.number(1, 3); stalls > 0; --stalls) {
                each.heldUntil = each.now() + random.number(1, 150) / 1000.0;
                each.clocks(random.number(1, 6));
            }
            each.clocks(150);
            ASSERT_NEAR(each.error(), 0, tick) << i;
            ASSERT_EQ(fresh.phase(), 1U);
        }
    }
}

TEST_F(ClockFollowerTest, NoticesSilenceWithinHalfASecondAndKeepsTheTempo) {
    sender.setTempo(97);
    sender.clocks(100);
    follower.pass(sender.heard() + second * 4 / 10);
    EXPECT_TRUE(follower.isLocked());
    follower.pass(sender.heard() + second / 2);
    EXPECT_FALSE(follower.isLocked());
    EXPECT_NEAR(follower.tempo(), 97, 1e-3);
    sender.pause(10);
    sender.setTempo(150);
    sender.clocks(ClockFollower::trustedClocks - 1);
    EXPECT_NEAR(follower.tempo(), 97, 1e-3) << "until the new one is known";
    sender.clocks(1);
    EXPECT_TRUE(follower.isLocked());
    EXPECT_NEAR(follower.tempo(), 150, 1e-3);
    EXPECT_EQ(follower.phase(), 2U);
}

TEST_F(ClockFollowerTest, AStartSetsThePhaseAndKeepsTheTempo) {
    sender.jitter = 0.001;
    sender.clocks(200);
    const double tempo = follower.tempo();
    sender.pause(0.013);
    follower.start();
    sender.clock();
    EXPECT_EQ(follower.phase(), 2U);
    EXPECT_TRUE(follower.isLocked());
    EXPECT_EQ(follower.tempo(), tempo);
    EXPECT_NEAR(follower.clocksAt(sender.heard()), 0, 1e-9);
    sender.clocks(96);
    EXPECT_NEAR(follower.clocksAt(static_cast<std::int64_t>(sender.now() * second)), 96, 2 * tick);
}

TEST_F(ClockFollowerTest, KnowsThePlaceInTheSong) {
    sender.clocks(10);
    EXPECT_FALSE(follower.isRolling());
    follower.start();
    sender.clocks(25);
    EXPECT_TRUE(follower.isRolling());
    EXPECT_EQ(follower.songPosition(), 24);
    follower.stop();
    sender.clocks(7);
    EXPECT_EQ(follower.songPosition(), 24);
    follower.goOn();
    sender.clocks(1);
    EXPECT_EQ(follower.songPosition(), 25);
    follower.stop();
    follower.locate(16);
    follower.goOn();
    sender.clocks(3);
    EXPECT_EQ(follower.songPosition(), 98);
    sender.lose = true;
    sender.clock();
    sender.lose = false;
    sender.clocks(30);
    EXPECT_EQ(follower.songPosition(), 129);
    EXPECT_EQ(follower.phase(), 2U) << "going on is no new phase";
}

// Whatever comes, nothing breaks: times that stand still, bursts, silences, every message.
TEST_F(ClockFollowerTest, BearsAnything) {
    RandomCases random;
    std::int64_t time = 0;
    for (int i = 0; i < 20'000; ++i) {
        const int kind = random.number(0, 40);
        time += kind == 0 ? second * random.number(0, 3) : kind < 10 ? 0 : random.number<std::int64_t>(0, 40'000'000);
        switch (random.number(0, 60)) {
        case 0:
            follower.start();
            break;
        case 1:
            follower.stop();
            break;
        case 2:
            follower.goOn();
            break;
        case 3:
            follower.locate(random.number(0, 16383));
            break;
        case 4:
            follower.forget();
            break;
        case 5:
            follower.pass(time);
            break;
        default:
            follower.clock(time);
        }
        ASSERT_TRUE(std::isfinite(follower.tempo()) && follower.tempo() >= 0 && follower.tempo() <= 1200.001);
        if (follower.isLocked()) {
            ASSERT_GT(follower.tempo(), 0);
            ASSERT_TRUE(std::isfinite(follower.clocksAt(time)));
            ASSERT_GT(follower.clocksAt(time + second), follower.clocksAt(time));
        }
    }
}

} // namespace
} // namespace Host
