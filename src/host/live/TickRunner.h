// Runs the engine tick by tick along a device's time.
#pragma once

#include "host/live/ClockedEngine.h"
#include "host/live/TickGrid.h"

#include <atomic>
#include <cstdint>
#include <optional>

namespace Host {

// The part of a clock that does not wait. Each tick is run once, in order, as two slices: (t, t), which takes in what
// is pending and stamps what has no time with t, and (t, t + 1), which plays it. What is marked [clock] is called by
// one thread.
class TickRunner final {
public:
    // Later than this, in seconds, or by as many ticks as the engine no longer plays in one slice: the machine has
    // slept.
    static constexpr int sleptSeconds = 1;
    static constexpr std::int32_t sleptTicks = 5000;
    // Engine time goes from engineTimeOrigin up to this tick and starts again, long before 32 bits are full.
    static constexpr std::int32_t lastTick = 2'100'000'000;

    enum class Playing {
        nothing, // no slice is being played
        tick,    // a tick in its own time
        again,   // a tick that had been run before, or an empty slice
    };

    // The tempo that one may ask for, in beats a minute.
    static constexpr int slowestTempo = 10;
    static constexpr int fastestTempo = 500;

    // The first tick, engineTimeOrigin, stands at `time`.
    TickRunner(ClockedEngine& engine, std::int64_t unitsPerSecond, std::int64_t time, int beatsPerMinute);

    // Runs every tick that is due at `time` or before. Ticks that were missed by a short delay are made up for; after
    // a long one (sleptSeconds, sleptTicks) they are left out and the engine is told. [clock]
    void runUntil(std::int64_t time);
    // Something has arrived. While the engine does not depend on ticks, the last tick is run again and plays it; that
    // plays nothing else, since all that belonged to the tick has been played. Else it waits for the next tick, and
    // only resets are taken in now: the empty slice of the next tick. [clock]
    void runArrivals();

    // The next tick to be run stands at `time` now, in these units. [clock]
    void moveTo(std::int64_t time, std::int64_t unitsPerSecond);
    // 10..500, from the next tick on, unless ticks are steered and that is held. [any]
    void setTempo(int beatsPerMinute) noexcept;
    [[nodiscard]] Tempo ownTempo() const noexcept { return {tempo_.load(std::memory_order_relaxed)}; } // [any]
    // The ticks from the next one on follow at this tempo; nothing: at their own again. [clock]
    void steer(std::optional<Tempo> tempo) noexcept;
    // Whether setTempo leaves a steered tempo as it is. [clock]
    void holdSteering(bool on) noexcept { holdsSteering_.store(on, std::memory_order_relaxed); }
    [[nodiscard]] bool isSteered() const noexcept { return steered_.load(std::memory_order_relaxed) != 0; } // [any]

    [[nodiscard]] const TickGrid& grid() const noexcept { return grid_; } // [clock]
    // When the next tick is due. [clock]
    [[nodiscard]] std::int64_t nextTime() const noexcept { return grid_.timeOf(next_); }
    // What a call of the engine is about right now, the time of its tick and of the tick after it. [any thread under
    // the engine lock]
    [[nodiscard]] Playing playing() const noexcept { return playing_.load(std::memory_order_relaxed); }
    [[nodiscard]] std::int64_t playingTime() const noexcept { return playingTime_.load(std::memory_order_relaxed); }
    [[nodiscard]] std::int64_t playingEnd() const noexcept { return playingEnd_.load(std::memory_order_relaxed); }

    // The tick that was run last, engineTimeOrigin - 1 before the first. [any]
    [[nodiscard]] Backend::Ticks lastRun() const noexcept { return {lastRun_.load(std::memory_order_acquire)}; }

private:
    [[nodiscard]] Tempo wantedTempo() const noexcept;
    void announce(Playing what, std::int32_t tick) noexcept;
    void run(std::int32_t tick, Playing how);
    void runNext();
    void skipTo(std::int32_t tick);
    void startAgain();

    ClockedEngine& engine_;
    TickGrid grid_;
    std::int32_t next_ = Backend::engineTimeOrigin.count;
    std::atomic<Playing> playing_ = Playing::nothing;
    std::atomic<std::int64_t> playingTime_ = 0;
    std::atomic<std::int64_t> playingEnd_ = 0;
    std::atomic<int> tempo_;
    std::atomic<std::int32_t> steered_ = 0; // in thousandths; 0: not
    std::atomic<bool> holdsSteering_ = false;
    std::atomic<std::int32_t> lastRun_ = Backend::engineTimeOrigin.count - 1;
};

} // namespace Host
