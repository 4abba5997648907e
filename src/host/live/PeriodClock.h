// The clock by the frames of a device that works in periods, as a JACK server does.
#pragma once

#include "host/live/Clock.h"
#include "host/live/ClockWaker.h"
#include "host/live/Published.h"
#include "host/live/TickRunner.h"
#include "host/live/TimeSource.h"
#include "platform/Threads.h"
#include "values/QelMidiMessage.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace Host {

// The device calls periodBegins at the start of each period, at frame F, with n frames in it. The clock then runs the
// ticks of the period before, those that begin before F: all that arrived in it has had a period's time to reach the
// engine, so each tick is run once and meets what belongs to it. What they play is due at their frame + 2n, which
// falls into the period after this one, so that the clock has a period's time in turn. Hence one latency of 2n frames
// for everything, and ticks that form a grid leave as that grid of frames, whatever the period. A late wake-up or an
// xrun moves nothing: the ticks that were missed are run with their own frames, and what can no longer be played at its
// frame is played at the next.
//
// Messages that came in at a frame (QelMidiMessage::getHostTime) leave at that frame + 2n, not moved to any tick. What
// has no time is played as soon as it can be: arrivals wake the clock as they wake SleepingClock, by the same rule.
//
// While the device is silent (its server has died, or not yet begun), the clock goes on by the system's time, so that
// nobody who waits for a slice waits for ever.
class PeriodClock final : public Clock {
public:
    // dueFrame's answer for what has no time.
    static constexpr std::int64_t asSoonAsPossible = -1;
    static constexpr int latencyPeriods = 2;

    // Both outlive the clock.
    explicit PeriodClock(ClockedEngine& engine, int beatsPerMinute = 120, TimeSource& time = TimeSource::ofSystem());
    ~PeriodClock() override;

    void start() override;
    void stop() override;
    void eventsArrived() noexcept override { waker_.tellArrival(); }
    void wake() noexcept override { waker_.tellUrgent(); }
    void setTempo(int beatsPerMinute) noexcept override { runner_.setTempo(beatsPerMinute); }
    [[nodiscard]] int tempo() const noexcept override { return runner_.tempo(); }
    [[nodiscard]] Backend::Ticks now() const noexcept override { return runner_.lastRun(); }

    // A period of the device begins. `connection` counts the servers: with a new one frames start anew. Neither waits
    // nor allocates. [process]
    struct Period {
        std::int64_t frame = 0;
        std::int32_t frames = 0;
        std::int32_t framesPerSecond = 48000;
        std::uint32_t connection = 0;
        std::uint32_t number = 0; // counts the periods; set by the clock
    };
    void periodBegins(Period period) noexcept;

    // The tick in which a frame lies. [any]
    [[nodiscard]] Backend::Ticks tickAt(std::int64_t frame) const noexcept { return {grid_.load().tickAt(frame)}; }
    // When a message that the engine plays right now is to leave. [any thread under the engine lock]
    [[nodiscard]] std::int64_t dueFrame(const Backend::MidiEngine::QelMidiMessage& message) const noexcept;

    // What the thread does again and again. For tests that do not start(). [clock]
    void round();

private:
    void follow(const Period& period);
    void goOnAlone(std::chrono::nanoseconds now);
    [[nodiscard]] std::chrono::nanoseconds patience() const noexcept;
    [[nodiscard]] std::chrono::nanoseconds timeOfFrame(std::int64_t frame) const noexcept;
    [[nodiscard]] std::int64_t frameAt(std::chrono::nanoseconds time) const noexcept;

    ClockedEngine& engine_;
    TimeSource& time_;
    TickRunner runner_;
    ClockWaker waker_;
    Published<Period> incoming_;
    std::uint32_t periods_ = 0; // [process]
    Published<TickGrid> grid_;
    std::atomic<std::int64_t> latency_ = 0;

    // [clock]
    Period period_;
    std::chrono::nanoseconds seen_; // when it was taken
    bool alone_ = false;

    std::atomic<bool> stopping_ = false;
    std::unique_ptr<Platform::Thread> thread_;
};

} // namespace Host
