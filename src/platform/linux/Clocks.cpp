#include "platform/Clocks.h"

#include <ctime>
#include <sys/prctl.h>

namespace Platform {

std::chrono::nanoseconds monotonicTime() noexcept {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

std::uint32_t millisecondTime() noexcept {
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(monotonicTime()).count());
}

void requestPreciseTimers() noexcept {
    // The kernel may end a timed wait later by the thread's slack, 50 microseconds unless told otherwise.
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
}

} // namespace Platform
