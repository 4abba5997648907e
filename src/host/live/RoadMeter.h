// How long an event takes through the program, measured by probes that go the road of an event.
#pragma once

#include "host/live/TimeSource.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace Host {

// A probe is posted as an event is, reaches the engine, and is there when the clock next plays. One at a time.
class RoadMeter final {
public:
    // `time` outlives the meter.
    explicit RoadMeter(TimeSource& time = TimeSource::ofSystem()) : time_(time) {}

    // A probe sets out; false while one is on its way. [main]
    [[nodiscard]] bool begin() noexcept;
    // It has reached the engine. [engine]
    void reachedEngine() noexcept;
    // A tick is played. [clock]
    void tickPlayed() noexcept {
        if (state_.load(std::memory_order_relaxed) == State::atEngine) {
            arrive();
        }
    }

    struct Reading {
        double latencyMs = -1; // negative: nothing has been measured yet
        double jitterMs = 0;   // from the shortest to the longest of the latest probes
    };
    // Of the latest probes. Where messages are kept for `even` so that they leave evenly, they take that long, and
    // only what came later than that jitters. [main]
    [[nodiscard]] Reading reading(std::chrono::nanoseconds even) const noexcept;

private:
    enum class State : std::uint8_t { idle, onItsWay, atEngine };

    void arrive() noexcept;

    TimeSource& time_;
    std::atomic<State> state_ = State::idle;
    std::atomic<std::int64_t> began_ = 0; // nanoseconds, as the next
    std::array<std::atomic<std::int64_t>, 16> latest_{};
    std::atomic<std::size_t> count_ = 0; // of all that have arrived
};

} // namespace Host
