// RealtimeKit: the system service that gives real-time priority to users whom the kernel's limits give none.
#pragma once

namespace Platform {

// Both ask over the system's D-Bus for the calling thread, take at most three quarters of a second, and give false
// where there is no such service or it refuses.

// SCHED_RR at `priority`, or at the highest that the service allows. It demands RLIMIT_RTTIME in return: from then on
// the kernel ends a program one of whose real-time threads computes for longer than the service's limit (a fifth of a
// second, as a rule) without once waiting. So this is for threads with little to do at a time. [any]
[[nodiscard]] bool askForRealtime(int priority) noexcept;

// A larger share of the processor, without a limit: for threads that may have long work to do. [any]
[[nodiscard]] bool askForHighPriority() noexcept;

} // namespace Platform
