#include "platform/Clocks.h"

#include <windows.h>
// After windows.h, which it needs.
#include <timeapi.h>

namespace Platform {

std::chrono::nanoseconds monotonicTime() noexcept {
    static const std::int64_t perSecond = [] {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        return frequency.QuadPart;
    }();
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    // Seconds and rest apart, so that nothing overflows after days.
    return std::chrono::seconds(now.QuadPart / perSecond) +
           std::chrono::nanoseconds(now.QuadPart % perSecond * 1'000'000'000 / perSecond);
}

std::uint32_t millisecondTime() noexcept {
    return timeGetTime();
}

void requestPreciseTimers() noexcept {
    // For the whole process, and for as long as it runs.
    timeBeginPeriod(1);
}

} // namespace Platform
