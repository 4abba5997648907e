#include "host/live/ClockFollower.h"

#include <algorithm>
#include <cmath>

namespace Host {

namespace {

constexpr double clocksPerBeat = 24;
constexpr double secondsPerMinute = 60;
// Clocks go no faster.
constexpr double fastestTempo = 1200;
// Fewer clocks than these do not tell a change of tempo from their own jitter; of a new tempo the latest ones are kept.
constexpr std::size_t settledClocks = 8;
constexpr std::size_t keptClocks = 4;
constexpr double driftShare = 0.25;
constexpr double spreadShare = 1.0 / 32;
// Beyond this many times the spread, and this part of a period, clocks are late or early together.
constexpr double suspectDrift = 4;
constexpr double smallestDrift = 0.01;
constexpr double suspectGap = 4;
// As many gaps one directly after the other are no losses.
constexpr int gapsOfATempo = 3;

} // namespace

ClockFollower::ClockFollower(std::int64_t unitsPerSecond) : unitsPerSecond_(static_cast<double>(unitsPerSecond)) {}

void ClockFollower::forget() {
    count_ = 0;
    isLocked_ = isRolling_ = rollsWithNext_ = false;
}

void ClockFollower::start() {
    nextPosition_ = 0;
    goOn();
}

void ClockFollower::goOn() {
    isRolling_ = rollsWithNext_ = true;
}

void ClockFollower::pass(std::int64_t now) {
    if (count_ > 0 && static_cast<double>(now - latest().time) > patience * unitsPerSecond_) {
        count_ = 0;
        isLocked_ = false;
    }
}

double ClockFollower::tempo() const {
    return knownPeriod_ > 0 ? secondsPerMinute * unitsPerSecond_ / (clocksPerBeat * knownPeriod_) : 0;
}

double ClockFollower::clocksAt(std::int64_t time) const {
    return static_cast<double>(latest().number) + (static_cast<double>(time - latest().time) - offset_) / period_;
}

void ClockFollower::append(Clock clock) {
    clocks_[end_ % longestMemory] = clock;
    ++end_;
    count_ = std::min(count_ + 1, longestMemory);
}

void ClockFollower::beginPhase(std::int64_t time) {
    keepsTempo_ = isLocked_;
    count_ = 0;
    append({0, time});
    ++phase_;
    offset_ = 0;
    drift_ = 0;
    spread_ = keepsTempo_ ? spread_ : 0;
    assumedLost_ = lostInARow_ = gapsInARow_ = 0;
}

void ClockFollower::clock(std::int64_t time) {
    pass(time);
    const bool startsAnew = rollsWithNext_ && nextPosition_ == 0; // a sender may set its clocks anew when it starts
    if (count_ == 0 || startsAnew) {
        beginPhase(time);
        moveSong(1);
        return;
    }
    const std::int64_t before = latest().number;
    const std::int64_t number = isLocked_ ? numberOf(time) : before + 1;
    const bool isOther = isLocked_ && isOffLine(time, number);
    append({number, time});
    if (isOther) {
        count_ = std::min(count_, keptClocks);
        keepsTempo_ = false;
        drift_ = 0;
    }
    fit();
    moveSong(number - before);
}

std::int64_t ClockFollower::numberOf(std::int64_t time) {
    const double passed = clocksAt(time) - static_cast<double>(latest().number);
    const bool isGap = passed > 1.5 && (passed - 1) * period_ > suspectGap * spread_;
    if (isGap && ++gapsInARow_ < gapsOfATempo) {
        assumedLost_ = std::lround(passed) - 1;
        lostInARow_ += assumedLost_;
        return latest().number + assumedLost_ + 1;
    }
    if (isGap) { // nothing was lost: the tempo is slower
        latest().number -= lostInARow_;
        count_ = 1;
        keepsTempo_ = false;
    } else if (passed < 0.5) { // nor was it, if it was only held up
        latest().number -= assumedLost_;
    }
    assumedLost_ = lostInARow_ = gapsInARow_ = 0;
    return latest().number + 1;
}

bool ClockFollower::isOffLine(std::int64_t time, std::int64_t number) {
    const double off = (clocksAt(time) - static_cast<double>(number)) * period_;
    drift_ += (off - drift_) * driftShare;
    const double limit = std::max(suspectDrift * spread_, smallestDrift * period_);
    const bool isSettled = count_ >= settledClocks;
    if (number < static_cast<std::int64_t>(settledClocks)) { // the first of the phase
        spread_ += (std::abs(off) - spread_) * driftShare;
    } else if (isSettled) { // what another tempo brings is no spread
        spread_ += (std::min(std::abs(off), suspectGap * spread_ + limit) - spread_) * spreadShare;
    }
    return isSettled && std::abs(drift_) > limit;
}

// Least squares over the clocks that count, by their distances from the latest.
void ClockFollower::fit() {
    double meanX = 0;
    double meanY = 0;
    for (std::size_t i = 0; i < count_; ++i) {
        meanX += static_cast<double>(latest(i).number - latest().number);
        meanY += static_cast<double>(latest(i).time - latest().time);
    }
    meanX /= static_cast<double>(count_);
    meanY /= static_cast<double>(count_);
    double xx = 0;
    double xy = 0;
    for (std::size_t i = 0; i < count_; ++i) {
        const double x = static_cast<double>(latest(i).number - latest().number) - meanX;
        xx += x * x;
        xy += x * (static_cast<double>(latest(i).time - latest().time) - meanY);
    }
    const bool isTrusted = count_ >= static_cast<std::size_t>(trustedClocks);
    const bool takesTempo = !keepsTempo_ || isTrusted;
    const double shortest = secondsPerMinute * unitsPerSecond_ / (clocksPerBeat * fastestTempo);
    if (takesTempo && xx > 0) {
        period_ = std::max(xy / xx, shortest);
    }
    offset_ = meanY - period_ * meanX;
    isLocked_ = isLocked_ || isTrusted;
    if (isLocked_ && takesTempo && count_ >= keptClocks) {
        knownPeriod_ = period_;
    }
}

void ClockFollower::moveSong(std::int64_t clocks) {
    if (!isRolling_) {
        return;
    }
    position_ = rollsWithNext_ ? nextPosition_ : position_ + clocks;
    nextPosition_ = position_ + 1;
    rollsWithNext_ = false;
}

} // namespace Host
