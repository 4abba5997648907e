// The clock by the system's time, for MIDI systems that have none of their own.
#pragma once

#include "host/live/Clock.h"
#include "host/live/ClockThread.h"
#include "host/live/ClockWaker.h"
#include "host/live/TickRunner.h"
#include "host/live/TimeSource.h"

namespace Host {

// Sleeps to each tick and runs it: the empty slice (t, t) and the slice (t, t + 1).
//
// What arrives while it sleeps need not wait for the next tick, which at 40 beats a minute is 3 milliseconds away. As
// long as nothing acts on each tick (ClockedEngine::isTickDependent), the clock wakes at once and runs the current tick
// again. That keeps the rules of slices: the engine's time does not go back, and a tick that was run plays, when run
// again, only what has arrived since, because a played event is gone from the queue. So the latency does not depend on
// the tempo. While something acts on each tick, what arrives waits for the next one: a tick that is run again would be
// counted twice.
class SleepingClock final : public Clock {
public:
    // Both outlive the clock.
    explicit SleepingClock(ClockedEngine& engine, int beatsPerMinute = 120, TimeSource& time = TimeSource::ofSystem());

    void start() override;
    void stop() override { thread_.stop(); }
    void eventsArrived() noexcept override { waker_.tellArrival(); }
    void wake() noexcept override { waker_.tellUrgent(); }
    void setTempo(int beatsPerMinute) noexcept override { runner_.setTempo(beatsPerMinute); }
    [[nodiscard]] TempoSync& sync() noexcept override { return sync_; }
    [[nodiscard]] const TempoSync& sync() const noexcept override { return sync_; }
    [[nodiscard]] Backend::Ticks now() const noexcept override { return runner_.lastRun(); }

    // As TempoSync::arrived, now. [input]
    [[nodiscard]] bool arrived(int input, const MidiBytes& bytes) noexcept {
        return sync_.arrived(input, bytes, time_.now().count());
    }

    // What the thread does again and again: runs what is due, then sleeps to the next tick or arrival. For tests that
    // do not start(). [clock]
    void round();

private:
    ClockedEngine& engine_;
    TimeSource& time_;
    TickRunner runner_;
    TempoSync sync_;
    ClockWaker waker_;
    ClockThread thread_{[this] { round(); }, waker_};
};

} // namespace Host
