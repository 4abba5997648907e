#include "host/live/PeriodClock.h"

#include <algorithm>

namespace Host {

using namespace std::chrono_literals;

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
// An event crosses four threads on its way; they do not make it in less.
constexpr std::int64_t shortestLatency = 1'250'000; // nanoseconds
// A device that has been silent for so long, and for two of its periods, is taken for dead: who waits for a slice does
// so for less than a tenth of a second. Going on alone harms nothing when it was late only.
constexpr std::chrono::nanoseconds shortestPatience = 60ms;
constexpr int patientPeriods = 2;

std::chrono::nanoseconds durationOf(std::int64_t frames, const PeriodClock::Period& period) {
    return std::chrono::nanoseconds{frames * nanosecondsPerSecond / period.framesPerSecond};
}

} // namespace

PeriodClock::PeriodClock(ClockedEngine& engine, int beatsPerMinute, TimeSource& time)
    : engine_(engine), time_(time), runner_(engine, Period{}.framesPerSecond, 0, beatsPerMinute),
      sync_(engine, runner_), incoming_(Period{}), grid_(runner_.grid()), seen_(time.now()) {}

void PeriodClock::periodBegins(Period period) noexcept {
    period.number = ++periods_;
    incoming_.store(period);
    waker_.tell();
}

void PeriodClock::arrivalsTaken(std::int64_t frame) noexcept {
    taken_.store(frame);
    waker_.tell();
}

std::int64_t PeriodClock::latencyOf(const Period& period) noexcept {
    const std::int64_t atLeast = shortestLatency * period.framesPerSecond / nanosecondsPerSecond;
    const std::int64_t frames = std::max(period.frames, 1);
    return std::max<std::int64_t>((atLeast + frames - 1) / frames, 1) * frames;
}

std::chrono::nanoseconds PeriodClock::timeOfFrame(std::int64_t frame) const noexcept {
    // Rounded up: by then frameAt gives that frame.
    return seen_ + durationOf(frame - period_.frame, period_) + 1us;
}

std::int64_t PeriodClock::frameAt(std::chrono::nanoseconds time) const noexcept {
    // In two steps, so that days of silence do not overflow.
    const std::int64_t passed = (time - seen_).count();
    const std::int64_t rate = period_.framesPerSecond;
    return period_.frame + passed / nanosecondsPerSecond * rate +
           passed % nanosecondsPerSecond * rate / nanosecondsPerSecond;
}

void PeriodClock::take(const Period& period) {
    // After a time alone the device may be behind; it is waited for, unless by much.
    const bool another = period.connection != period_.connection || period.framesPerSecond != period_.framesPerSecond ||
                         period.frame < period_.frame || runner_.nextTime() - period.frame > period.framesPerSecond / 4;
    if (another) {
        runner_.moveTo(period.frame, period.framesPerSecond);
        sync_.moveTo(period.framesPerSecond);
        taken_.store(-1);
    }
    period_ = period;
    seen_ = time_.now();
    alone_ = false;
    latency_.store(latencyOf(period), std::memory_order_relaxed);
    latencyTime_.store(durationOf(latencyOf(period), period).count(), std::memory_order_relaxed);
    sync_.runUntil(period.frame - 1); // what was left of the period before
    sync_.transportAt(period.frame, period.transport);
}

std::chrono::nanoseconds PeriodClock::work(bool arrived) {
    const auto now = time_.now();
    const auto dead =
        seen_ + std::max(shortestPatience, durationOf(std::int64_t{patientPeriods} * period_.frames, period_));
    if (alone_ || now >= dead) {
        alone_ = true;
        sync_.runUntil(frameAt(now));
        return timeOfFrame(runner_.nextTime());
    }
    const auto latest = seen_ + durationOf(latencyOf(period_) / 2, period_);
    if (taken_.load() < period_.lastArrival && now < latest) {
        return latest;
    }
    if (arrived) { // what belongs to the tick before the period's own is not to move into them
        runner_.runArrivals();
    }
    sync_.runUntil(period_.frame + period_.frames - 1);
    return dead;
}

void PeriodClock::round() {
    const bool arrived = waker_.takeArrivals();
    const Backend::Ticks before = runner_.lastRun();
    if (const Period period = incoming_.load(); period.number != period_.number) {
        take(period);
    }
    const std::chrono::nanoseconds idleUntil = work(arrived);
    if (arrived && runner_.lastRun() == before) {
        runner_.runArrivals();
    }
    grid_.store(runner_.grid());
    if (engine_.isTickDependent() || waker_.awaitArrivals()) {
        time_.sleepUntil(idleUntil, waker_.event());
    }
    waker_.ignoreArrivals();
}

Backend::MidiEngine::MidiPlayer::TickTime PeriodClock::tickTime() const noexcept {
    if (runner_.playing() == TickRunner::Playing::nothing) {
        return {};
    }
    return {runner_.playingTime(), runner_.playingEnd()};
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
