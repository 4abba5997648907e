#include "host/live/SleepingClock.h"

namespace Host {

namespace {
constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
}

SleepingClock::SleepingClock(ClockedEngine& engine, int beatsPerMinute, TimeSource& time)
    : engine_(engine), time_(time), runner_(engine, nanosecondsPerSecond, time.now().count(), beatsPerMinute),
      sync_(engine, runner_) {}

void SleepingClock::start() {
    runner_.moveTo(time_.now().count(), nanosecondsPerSecond);
    thread_.start();
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
