// The time by which a clock sleeps.
#pragma once

#include "platform/AutoResetEvent.h"

#include <chrono>

namespace Host {

class TimeSource {
public:
    virtual ~TimeSource() = default;
    // Never goes back.
    [[nodiscard]] virtual std::chrono::nanoseconds now() noexcept = 0;
    // Comes back at `time`, or earlier when `event` is signalled.
    virtual void sleepUntil(std::chrono::nanoseconds time, Platform::AutoResetEvent& event) noexcept = 0;

    // The system's monotonic clock.
    [[nodiscard]] static TimeSource& ofSystem();
};

} // namespace Host
