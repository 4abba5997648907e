#include "host/live/TimeSource.h"

#include "platform/Clocks.h"

namespace Host {

namespace {

class SystemTime final : public TimeSource {
public:
    [[nodiscard]] std::chrono::nanoseconds now() noexcept override { return Platform::monotonicTime(); }
    void sleepUntil(std::chrono::nanoseconds time, Platform::AutoResetEvent& event) noexcept override {
        if (const auto rest = time - now(); rest > std::chrono::nanoseconds::zero()) {
            static_cast<void>(event.waitFor(rest));
        }
    }
};

} // namespace

TimeSource& TimeSource::ofSystem() {
    static SystemTime time;
    return time;
}

} // namespace Host
