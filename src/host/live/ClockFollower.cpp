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
// So many strays one after the other are a matter of tempo or of loss, as soon as they are even, or at last.
constexpr std::size_t suspectStrays = 6;
constexpr std::size_t mostStrays = 12;
constexpr double spreadShareAtFirst = 0.25;
constexpr double spreadShare = 1.0 / 32;
// Clocks are strays beyond this many times the spread and this part of a period.
constexpr double straySpreads = 4;
constexpr double strayPart = 0.01;
// What is as near as this, in periods, is the same.
constexpr double nearPart = 0.1;

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
    append({0, time, false});
    ++phase_;
    offset_ = 0;
    strays_ = 0;
    spread_ = keepsTempo_ ? spread_ : 0;
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
    Clock clock{before + 1, time, false};
    clock.isStray = isLocked_ && isStray(clock);
    append(clock);
    strays_ = clock.isStray ? strays_ + 1 : 0;
    if (strays_ >= suspectStrays) {
        judgeStrays();
    }
    fit();
    moveSong(latest().number - before);
}

double ClockFollower::offLine(const Clock& clock) const {
    return (clocksAt(clock.time) - static_cast<double>(clock.number)) * period_;
}

double ClockFollower::limit() const {
    return std::max(straySpreads * spread_, strayPart * period_);
}

bool ClockFollower::isStray(const Clock& clock) {
    const double off = std::abs(offLine(clock));
    const double farOff = limit();
    if (clock.number < static_cast<std::int64_t>(settledClocks)) { // the first of the phase
        spread_ += (off - spread_) * spreadShareAtFirst;
    } else if (count_ >= settledClocks) { // what strays is no spread
        spread_ += (std::min(off, farOff) - spread_) * spreadShare;
    }
    return count_ >= settledClocks && off > farOff;
}

void ClockFollower::judgeStrays() {
    double period = 0;
    const bool areEven = latestAreEven(period);
    if (!areEven && strays_ < mostStrays) {
        return;
    }
    const double late = offLine(latest()) / period_;
    const std::int64_t lost = std::lround(late);
    const bool someWereLost = areEven && lost > 0 && std::abs(period / period_ - 1) < nearPart &&
                              std::abs(late - static_cast<double>(lost)) < nearPart;
    for (std::size_t i = 0; i < keptClocks; ++i) {
        latest(i).isStray = false;
        latest(i).number += someWereLost ? lost : 0;
    }
    strays_ = 0;
    if (!someWereLost) {
        count_ = keptClocks;
        keepsTempo_ = false;
    }
}

bool ClockFollower::latestAreEven(double& period) const {
    period = static_cast<double>(latest().time - latest(keptClocks - 1).time) / (keptClocks - 1);
    const double unevenness = std::max(straySpreads * spread_, nearPart * period);
    for (std::size_t i = 1; i + 1 < keptClocks; ++i) {
        const double expected = static_cast<double>(latest().time) - static_cast<double>(i) * period;
        if (std::abs(static_cast<double>(latest(i).time) - expected) > unevenness) {
            return false;
        }
    }
    return period > nearPart * period_;
}

// Least squares over the clocks that count, by their distances from the latest.
void ClockFollower::fit() {
    double n = 0;
    double sumX = 0;
    double sumY = 0;
    double sumXX = 0;
    double sumXY = 0;
    for (std::size_t i = 0; i < count_; ++i) {
        const Clock& each = latest(i);
        const auto x = static_cast<double>(each.number - latest().number);
        const auto y = static_cast<double>(each.time - latest().time);
        const double weight = each.isStray ? 0 : 1;
        n += weight;
        sumX += weight * x;
        sumY += weight * y;
        sumXX += weight * x * x;
        sumXY += weight * x * y;
    }
    const double meanX = sumX / n;
    const double meanY = sumY / n;
    const double xx = sumXX - n * meanX * meanX;
    const double xy = sumXY - n * meanX * meanY;
    const bool isTrusted = count_ >= static_cast<std::size_t>(trustedClocks);
    const bool takesTempo = !keepsTempo_ || isTrusted;
    const double shortest = secondsPerMinute * unitsPerSecond_ / (clocksPerBeat * fastestTempo);
    if (takesTempo && xx > 0.25) {
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
