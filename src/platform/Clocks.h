// The system's clocks.
#pragma once

#include <chrono>
#include <cstdint>

namespace Platform {

// Nanoseconds of a clock that never goes back; its zero is arbitrary. It may stand still while the machine sleeps.
[[nodiscard]] std::chrono::nanoseconds monotonicTime() noexcept; // [any]

// Milliseconds since some start, wrapping at 32 bits.
[[nodiscard]] std::uint32_t millisecondTime() noexcept; // [any]

// Milliseconds since 1970 (UTC). The user may set it forth and back.
[[nodiscard]] std::int64_t calendarTime() noexcept; // [any]

// Lets the calling thread's timed waits end as near to their time as the system can.
void requestPreciseTimers() noexcept;

} // namespace Platform
