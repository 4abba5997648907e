// The time of ticks: exact between tempo changes, continuous over them.
#include "host/live/TickGrid.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>

namespace Host {
namespace {

constexpr std::int32_t firstTick = 50'000'000;
constexpr std::int64_t rates[] = {8000, 44'100, 48'000, 192'000, 1'000'000'000};

// Where ticks ought to stand, in fractions of a unit.
class IdealGrid {
public:
    IdealGrid(std::int64_t rate, std::int64_t time) : rate_(static_cast<long double>(rate)), time_(time) {}
    void advance(std::int32_t ticks, int tempo) {
        time_ += static_cast<long double>(ticks) * rate_ / (8.0L * static_cast<long double>(tempo));
    }
    [[nodiscard]] long double time() const { return time_; }

private:
    long double rate_;
    long double time_;
};

TEST(TickGrid, ATickIsTheSixtiethOfAMinuteOver480TimesTheTempo) {
    const TickGrid grid(48'000, firstTick, 1000, 120);
    EXPECT_EQ(grid.timeOf(firstTick), 1000);
    EXPECT_EQ(grid.timeOf(firstTick + 1), 1050);
    EXPECT_EQ(grid.timeOf(firstTick + 480), 1000 + 24'000);
    EXPECT_EQ(grid.tickAt(1049), firstTick);
    EXPECT_EQ(grid.tickAt(1050), firstTick + 1);
    EXPECT_EQ(grid.tickAt(999), firstTick - 1);
}

TEST(TickGrid, NothingAddsUpOverTheDays) {
    for (const std::int64_t rate : rates) {
        for (const int tempo : {10, 97, 120, 121, 499, 500}) {
            const TickGrid grid(rate, firstTick, 7, tempo);
            const std::int32_t beats = 4'000'000; // 133 hours at 500 beats a minute
            EXPECT_EQ(grid.timeOf(firstTick + beats * 480), 7 + std::int64_t{beats} * 60 * rate / tempo)
                << rate << " per second, " << tempo << " BPM";
        }
    }
}

TEST(TickGrid, NorDoFractionsOfABeat) {
    const TickGrid grid(48'000, firstTick, 7, Tempo::of(133.7));
    EXPECT_EQ(grid.timeOf(firstTick + 4'011'000 * 480), 7 + std::int64_t{4'011'000} * 60 * 480'000 / 1337);
    EXPECT_NEAR(grid.ticksFrom(firstTick + 480, 7 + 48'000 * 60), 133.7 * 480 - 480, 1e-6);
}

TEST(TickGrid, TickAtIsTheInverseOfTimeOf) {
    RandomCases cases;
    auto& random = cases.generator();
    for (int i = 0; i < 20'000; ++i) {
        const std::int64_t rate = rates[random() % std::size(rates)];
        TickGrid grid(rate, firstTick, static_cast<std::int64_t>(random()), static_cast<int>(10 + random() % 491));
        grid.setTempo(firstTick + static_cast<std::int32_t>(random() % 1000), static_cast<int>(10 + random() % 491));
        const auto tick = static_cast<std::int32_t>(firstTick + 1000 + random() % 1'000'000);
        const std::int64_t time = grid.timeOf(tick) + static_cast<std::int64_t>(random() % 100'000);
        const std::int32_t found = grid.tickAt(time);
        ASSERT_LE(grid.timeOf(found), time);
        ASSERT_GT(grid.timeOf(found + 1), time);
    }
}

TEST(TickGrid, TempoChangesMoveNoTickAndLoseNone) {
    RandomCases cases;
    auto& random = cases.generator();
    for (const std::int64_t rate : rates) {
        int tempo = 120;
        TickGrid grid(rate, firstTick, 12'345, tempo);
        IdealGrid ideal(rate, 12'345);
        std::int32_t tick = firstTick;
        for (int change = 0; change < 1000; ++change) {
            const auto ticks = static_cast<std::int32_t>(random() % 3000);
            tick += ticks;
            ideal.advance(ticks, tempo);
            tempo = static_cast<int>(10 + random() % 491);
            const std::int64_t before = grid.timeOf(tick);
            grid.setTempo(tick, tempo);
            ASSERT_NEAR(static_cast<double>(grid.timeOf(tick) - before), 0, 1);
            // Each change rounds by 1/160 of a unit at most, to either side.
            ASSERT_NEAR(static_cast<double>(ideal.time() - static_cast<long double>(grid.timeOf(tick))), 0.5, 1.5)
                << "change " << change << " at " << rate << " per second";
        }
    }
}

TEST(TickGrid, SettingTheSameTempoOrAnotherNameMovesNothing) {
    TickGrid grid(44'100, firstTick, 0, 133);
    const TickGrid before = grid;
    for (std::int32_t i = 0; i < 1000; i += 7) {
        grid.setTempo(firstTick + i, 133);
    }
    for (std::int32_t i = 1000; i < 100'000; i += 991) {
        ASSERT_EQ(grid.timeOf(firstTick + i), before.timeOf(firstTick + i));
    }
    grid.rename(firstTick + 2000, firstTick);
    EXPECT_EQ(grid.timeOf(firstTick), before.timeOf(firstTick + 2000));
    EXPECT_EQ(grid.timeOf(firstTick + 5), before.timeOf(firstTick + 2005));
}

TEST(TickGrid, TempoIsClamped) {
    TickGrid grid(48'000, firstTick, 0, 1);
    EXPECT_EQ(grid.tempo(), TickGrid::slowestTempo);
    grid.setTempo(firstTick, 10'000);
    EXPECT_EQ(grid.tempo(), TickGrid::fastestTempo);
}

} // namespace
} // namespace Host
