#include "host/live/TickGrid.h"

#include <algorithm>

namespace Host {

namespace {

std::int64_t divideDown(std::int64_t dividend, std::int64_t divisor) noexcept {
    const std::int64_t quotient = dividend / divisor;
    return dividend % divisor < 0 ? quotient - 1 : quotient;
}

int clampTempo(int tempo) noexcept {
    return std::clamp(tempo, TickGrid::slowestTempo, TickGrid::fastestTempo);
}

} // namespace

TickGrid::TickGrid(std::int64_t unitsPerSecond, std::int32_t tick, std::int64_t time, int beatsPerMinute) noexcept
    : unitsPerSecond_(unitsPerSecond), baseTime_(time), baseTick_(tick), tempo_(clampTempo(beatsPerMinute)) {}

// The products stay below 2^62: a distance of 2^31 ticks times 10^9 units.
std::int64_t TickGrid::timeOf(std::int32_t tick) const noexcept {
    const std::int64_t distance = std::int64_t{tick} - baseTick_;
    return baseTime_ + divideDown(distance * unitsPerSecond_ + leftOver_, divisor());
}

std::int32_t TickGrid::tickAt(std::int64_t time) const noexcept {
    const std::int64_t distance = divideDown((time - baseTime_ + 1) * divisor() - leftOver_ - 1, unitsPerSecond_);
    return static_cast<std::int32_t>(baseTick_ + distance);
}

void TickGrid::setTempo(std::int32_t tick, int beatsPerMinute) noexcept {
    const std::int64_t position = (std::int64_t{tick} - baseTick_) * unitsPerSecond_ + leftOver_;
    const std::int64_t whole = divideDown(position, divisor());
    const std::int64_t rest = position - whole * divisor();
    const std::int64_t before = divisor();
    baseTick_ = tick;
    baseTime_ += whole;
    tempo_ = clampTempo(beatsPerMinute);
    leftOver_ = (2 * rest * divisor() + before) / (2 * before);
    if (leftOver_ == divisor()) {
        leftOver_ = 0;
        ++baseTime_;
    }
}

void TickGrid::rename(std::int32_t tick, std::int32_t newName) noexcept {
    setTempo(tick, tempo_);
    baseTick_ = newName;
}

} // namespace Host
