#include "host/live/TickRunner.h"

#include <algorithm>

namespace Host {

using Backend::engineTimeOrigin;

namespace {
int clampTempo(int beatsPerMinute) {
    return std::clamp(beatsPerMinute, TickRunner::slowestTempo, TickRunner::fastestTempo);
}
} // namespace

TickRunner::TickRunner(ClockedEngine& engine, std::int64_t unitsPerSecond, std::int64_t time, int beatsPerMinute)
    : engine_(engine), grid_(unitsPerSecond, engineTimeOrigin.count, time, clampTempo(beatsPerMinute)),
      tempo_(clampTempo(beatsPerMinute)) {}

void TickRunner::setTempo(int beatsPerMinute) noexcept {
    tempo_.store(clampTempo(beatsPerMinute), std::memory_order_relaxed);
    if (!holdsSteering_.load(std::memory_order_relaxed)) {
        steered_.store(0, std::memory_order_relaxed);
    }
}

void TickRunner::steer(std::optional<Tempo> tempo) noexcept {
    steered_.store(tempo ? tempo->thousandths : 0, std::memory_order_relaxed);
}

Tempo TickRunner::wantedTempo() const noexcept {
    Tempo tempo = ownTempo();
    if (const std::int32_t steered = steered_.load(std::memory_order_relaxed); steered != 0) {
        tempo.thousandths = std::clamp(steered, TickGrid::slowestTempo.thousandths, TickGrid::fastestTempo.thousandths);
    }
    return tempo;
}

void TickRunner::announce(Playing what, std::int32_t tick) noexcept {
    playingTime_.store(grid_.timeOf(tick), std::memory_order_relaxed);
    playingEnd_.store(grid_.timeOf(tick + 1), std::memory_order_relaxed);
    playing_.store(what, std::memory_order_relaxed);
}

void TickRunner::run(std::int32_t tick, Playing how) {
    announce(how, tick);
    engine_.playTimeSlice({tick}, {tick});
    engine_.playTimeSlice({tick}, {tick + 1});
    playing_.store(Playing::nothing, std::memory_order_relaxed);
}

void TickRunner::runNext() {
    if (const Tempo wanted = wantedTempo(); wanted != grid_.tempo()) {
        grid_.setTempo(next_, wanted);
    }
    lastRun_.store(next_, std::memory_order_release);
    run(next_, Playing::tick);
    ++next_;
    if (next_ > lastTick) {
        startAgain();
    }
}

void TickRunner::runUntil(std::int64_t time) {
    const std::int64_t late = time - nextTime();
    if (late < 0) {
        return;
    }
    const std::int32_t target = grid_.tickAt(time);
    if (late > sleptSeconds * grid_.unitsPerSecond() || target - next_ >= sleptTicks) {
        skipTo(target);
    }
    while (nextTime() <= time) {
        runNext();
    }
}

void TickRunner::runArrivals() {
    if (lastRun().count >= engineTimeOrigin.count && !engine_.isTickDependent()) {
        run(lastRun().count, Playing::again);
        return;
    }
    announce(Playing::again, next_);
    engine_.playTimeSlice({next_}, {next_});
    playing_.store(Playing::nothing, std::memory_order_relaxed);
}

// The engine sees one slice and, when it is long enough, leaves its ticks out. A shorter one is not shown to it: it
// would play a second's worth of ticks at once.
void TickRunner::skipTo(std::int32_t tick) {
    if (tick - next_ >= sleptTicks) {
        engine_.playTimeSlice({next_}, {tick});
    }
    next_ = tick;
    engine_.timeJumped();
}

// The engine plays what is scheduled for the near future and forgets no event when time goes backwards.
void TickRunner::startAgain() {
    engine_.playTimeSlice({next_}, engineTimeOrigin);
    grid_.rename(next_, engineTimeOrigin.count);
    next_ = engineTimeOrigin.count;
    lastRun_.store(next_ - 1, std::memory_order_release);
    engine_.timeJumped();
}

void TickRunner::moveTo(std::int64_t time, std::int64_t unitsPerSecond) {
    grid_ = TickGrid(unitsPerSecond, next_, time, wantedTempo());
}

} // namespace Host
