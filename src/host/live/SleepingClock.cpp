#include "host/live/SleepingClock.h"

#include "platform/Clocks.h"

namespace Host {

namespace {
constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
}

SleepingClock::SleepingClock(ClockedEngine& engine, int beatsPerMinute, TimeSource& time)
    : engine_(engine), time_(time), runner_(engine, nanosecondsPerSecond, time.now().count(), beatsPerMinute),
      sync_(engine, runner_) {}

SleepingClock::~SleepingClock() {
    stop();
}

void SleepingClock::start() {
    runner_.moveTo(time_.now().count(), nanosecondsPerSecond);
    thread_ = std::make_unique<Platform::Thread>([this] {
        Platform::setCurrentThreadName("clock");
        Platform::requestPreciseTimers();
        static_cast<void>(Platform::setCurrentThreadPriority(Platform::Priority::clock));
        while (!stopping_.load(std::memory_order_relaxed)) {
            round();
        }
    });
    thread_->resume();
}

void SleepingClock::stop() {
    stopping_.store(true, std::memory_order_relaxed);
    waker_.tell();
    thread_.reset();
}

void SleepingClock::round() {
    const bool arrived = waker_.takeArrivals();
    const Backend::Ticks before = runner_.lastRun();
    sync_.runUntil(time_.now().count());
    if (arrived && runner_.lastRun() == before) {
        runner_.runArrivals();
    }
    if (engine_.isTickDependent() || waker_.awaitArrivals()) {
        time_.sleepUntil(std::chrono::nanoseconds{runner_.nextTime()}, waker_.event());
    }
    waker_.ignoreArrivals();
}

} // namespace Host
