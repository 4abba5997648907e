#include "host/live/PeriodClock.h"

#include "platform/Clocks.h"

#include <algorithm>

namespace Host {

using namespace std::chrono_literals;

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
// A device that has been silent for so long, and for four of its periods, is taken for dead.
constexpr std::chrono::nanoseconds shortestPatience = 100ms;
constexpr int patientPeriods = 4;

} // namespace

PeriodClock::PeriodClock(ClockedEngine& engine, int beatsPerMinute, TimeSource& time)
    : engine_(engine), time_(time), runner_(engine, Period{}.framesPerSecond, 0, beatsPerMinute), incoming_(Period{}),
      grid_(runner_.grid()), seen_(time.now()) {}

PeriodClock::~PeriodClock() {
    stop();
}

void PeriodClock::start() {
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

void PeriodClock::stop() {
    stopping_.store(true, std::memory_order_relaxed);
    waker_.tell();
    thread_.reset();
}

void PeriodClock::periodBegins(Period period) noexcept {
    period.number = ++periods_;
    incoming_.store(period);
    waker_.tell();
}

std::chrono::nanoseconds PeriodClock::patience() const noexcept {
    const std::chrono::nanoseconds periods{patientPeriods * nanosecondsPerSecond * period_.frames /
                                           period_.framesPerSecond};
    return std::max(shortestPatience, periods);
}

std::chrono::nanoseconds PeriodClock::timeOfFrame(std::int64_t frame) const noexcept {
    // Rounded up: by then frameAt gives that frame.
    const std::int64_t rate = period_.framesPerSecond;
    return seen_ + std::chrono::nanoseconds{((frame - period_.frame) * nanosecondsPerSecond + rate - 1) / rate};
}

std::int64_t PeriodClock::frameAt(std::chrono::nanoseconds time) const noexcept {
    // In two steps, so that days of silence do not overflow.
    const std::int64_t passed = (time - seen_).count();
    const std::int64_t rate = period_.framesPerSecond;
    return period_.frame + passed / nanosecondsPerSecond * rate +
           passed % nanosecondsPerSecond * rate / nanosecondsPerSecond;
}

void PeriodClock::follow(const Period& period) {
    // After a time alone the device may be behind; it is waited for, unless by much.
    const bool another = period.connection != period_.connection || period.framesPerSecond != period_.framesPerSecond ||
                         period.frame < period_.frame || runner_.nextTime() - period.frame > period.framesPerSecond / 4;
    period_ = period;
    seen_ = time_.now();
    alone_ = false;
    latency_.store(std::int64_t{latencyPeriods} * period.frames, std::memory_order_relaxed);
    if (another) {
        runner_.moveTo(period.frame, period.framesPerSecond);
    }
    runner_.runUntil(period.frame - 1);
}

void PeriodClock::goOnAlone(std::chrono::nanoseconds now) {
    alone_ = true;
    runner_.runUntil(frameAt(now));
}

void PeriodClock::round() {
    const bool arrived = waker_.takeArrivals();
    const Backend::Ticks before = runner_.lastRun();
    if (const Period period = incoming_.load(); period.number != period_.number) {
        follow(period);
    } else if (const auto now = time_.now(); alone_ || now - seen_ >= patience()) {
        goOnAlone(now);
    }
    if (arrived && runner_.lastRun() == before) {
        runner_.runArrivals();
    }
    grid_.store(runner_.grid());
    if (engine_.isTickDependent() || waker_.awaitArrivals()) {
        time_.sleepUntil(alone_ ? timeOfFrame(runner_.nextTime()) : seen_ + patience(), waker_.event());
    }
    waker_.ignoreArrivals();
}

std::int64_t PeriodClock::dueFrame(const Backend::MidiEngine::QelMidiMessage& message) const noexcept {
    const std::int64_t latency = latency_.load(std::memory_order_relaxed);
    if (message.getHostTime() >= 0) {
        return message.getHostTime() + latency;
    }
    if (runner_.playing() == TickRunner::Playing::tick) {
        return runner_.playingTime() + latency;
    }
    return asSoonAsPossible;
}

} // namespace Host
