// The clock by the frames of a device that works in periods, as a JACK server does.
#pragma once

#include "host/live/Clock.h"
#include "host/live/ClockThread.h"
#include "host/live/ClockWaker.h"
#include "host/live/Published.h"
#include "host/live/TickRunner.h"
#include "host/live/TimeSource.h"
#include "values/QelMidiMessage.h"

#include <atomic>
#include <cstdint>

namespace Host {

// The device calls periodBegins at the start of each period, at frame F, with n frames in it and the messages that
// came in with it. The clock then runs the ticks whose frames lie in the period, ahead of them, and what they play is
// due at their frame plus one constant latency: one period, or as many as make a millisecond and a quarter. So ticks
// that form a grid leave as that grid of frames, whatever the period. A late wake-up or an xrun moves nothing: the
// ticks that were missed are run with their own frames, and what can no longer be played at its frame is played at the
// next.
//
// Messages that came in with a period are to meet the ticks that they belong to: the clock waits until they have
// reached the engine (arrivalsTaken), half the latency at most, before it runs the period's ticks. They leave at the
// frame at which they came (QelMidiMessage::getHostTime) plus the same latency, not moved to any tick. What came too
// late for its tick, and what has no time, is played as soon as it can be: arrivals wake the clock as they wake
// SleepingClock, by the same rule.
//
// While the device is silent (its server has died, or not yet begun), the clock goes on by the system's time, so that
// nobody who waits for a slice waits for ever.
class PeriodClock final : public Clock {
public:
    // dueFrame's answer for what has no time.
    static constexpr std::int64_t asSoonAsPossible = -1;

    // Both outlive the clock.
    explicit PeriodClock(ClockedEngine& engine, int beatsPerMinute = 120, TimeSource& time = TimeSource::ofSystem());

    void start() override { thread_.start(); }
    void stop() override { thread_.stop(); }
    void eventsArrived() noexcept override { waker_.tellArrival(); }
    void wake() noexcept override { waker_.tellUrgent(); }
    void setTempo(int beatsPerMinute) noexcept override { runner_.setTempo(beatsPerMinute); }
    [[nodiscard]] TempoSync& sync() noexcept override { return sync_; }
    [[nodiscard]] const TempoSync& sync() const noexcept override { return sync_; }
    [[nodiscard]] Backend::Ticks now() const noexcept override { return runner_.lastRun(); }
    [[nodiscard]] Backend::MidiEngine::MidiPlayer::TickTime tickTime() const noexcept override;
    [[nodiscard]] std::chrono::nanoseconds evenLatency() const noexcept override {
        return std::chrono::nanoseconds{latencyTime_.load(std::memory_order_relaxed)};
    }

    struct Period {
        std::int64_t frame = 0;
        std::int32_t frames = 0;
        std::int32_t framesPerSecond = 48000;
        std::int64_t lastArrival = -1; // frame of the last message that came in with the period; -1: none came
        std::uint32_t connection = 0;  // counts the servers: with a new one frames start anew
        std::uint32_t number = 0;      // counts the periods; set by the clock
        TransportReading transport{};
    };
    // A period of the device begins. Neither waits nor allocates. [process]
    void periodBegins(Period period) noexcept;
    // All messages that came in at this frame or before have reached the engine. [any]
    void arrivalsTaken(std::int64_t frame) noexcept;

    // The frames from an event to its being played, for periods of this kind. [any]
    [[nodiscard]] static std::int64_t latencyOf(const Period& period) noexcept;
    // The tick in which a frame lies. [any]
    [[nodiscard]] Backend::Ticks tickAt(std::int64_t frame) const noexcept { return {grid_.load().tickAt(frame)}; }
    // When a message that the engine plays right now is to leave. [any thread under the engine lock]
    [[nodiscard]] std::int64_t dueFrame(const Backend::MidiEngine::QelMidiMessage& message) const noexcept;

    // What the thread does again and again. For tests that do not start(). [clock]
    void round();

private:
    // Runs what is due and says how long there is nothing to do.
    [[nodiscard]] std::chrono::nanoseconds work(bool arrived);
    void take(const Period& period);
    [[nodiscard]] std::chrono::nanoseconds timeOfFrame(std::int64_t frame) const noexcept;
    [[nodiscard]] std::int64_t frameAt(std::chrono::nanoseconds time) const noexcept;

    ClockedEngine& engine_;
    TimeSource& time_;
    TickRunner runner_;
    TempoSync sync_;
    ClockWaker waker_;
    Published<Period> incoming_;
    std::uint32_t periods_ = 0; // [process]
    std::atomic<std::int64_t> taken_ = -1;
    Published<TickGrid> grid_;
    std::atomic<std::int64_t> latency_ = 0;     // frames
    std::atomic<std::int64_t> latencyTime_ = 0; // nanoseconds

    // [clock]
    Period period_;
    std::chrono::nanoseconds seen_; // when it was taken
    bool alone_ = false;

    ClockThread thread_{[this] { round(); }, waker_};
};

} // namespace Host
