#include "host/live/TickGrid.h"

#include <algorithm>

namespace Host {

namespace {

// Distances of days in nanoseconds, times thousandths, go beyond 64 bits.
__extension__ using Wide = __int128;

constexpr std::int64_t thousand = 1000;

Wide divideDown(Wide dividend, std::int64_t divisor) noexcept {
    const Wide quotient = dividend / divisor;
    return dividend % divisor < 0 ? quotient - 1 : quotient;
}

Tempo clampTempo(Tempo tempo) noexcept {
    return std::clamp(tempo, TickGrid::slowestTempo, TickGrid::fastestTempo);
}

} // namespace

TickGrid::TickGrid(std::int64_t unitsPerSecond, std::int32_t tick, std::int64_t time, Tempo tempo) noexcept
    : unitsPerSecond_(unitsPerSecond), baseTime_(time), baseTick_(tick), tempo_(clampTempo(tempo)) {}

std::int64_t TickGrid::timeOf(std::int32_t tick) const noexcept {
    const Wide distance = std::int64_t{tick} - baseTick_;
    return baseTime_ +
           static_cast<std::int64_t>(divideDown(distance * unitsPerSecond_ * thousand + leftOver_, divisor()));
}

std::int32_t TickGrid::tickAt(std::int64_t time) const noexcept {
    const Wide distance =
        divideDown(Wide{time - baseTime_ + 1} * divisor() - leftOver_ - 1, unitsPerSecond_ * thousand);
    return static_cast<std::int32_t>(baseTick_ + distance);
}

double TickGrid::ticksFrom(std::int32_t tick, std::int64_t time) const noexcept {
    const double perTick = static_cast<double>(unitsPerSecond_ * thousand) / static_cast<double>(divisor());
    const double sinceBase =
        static_cast<double>(time - baseTime_) - static_cast<double>(leftOver_) / static_cast<double>(divisor());
    return sinceBase / perTick - static_cast<double>(tick - baseTick_);
}

void TickGrid::setTempo(std::int32_t tick, Tempo tempo) noexcept {
    const Wide position = Wide{std::int64_t{tick} - baseTick_} * unitsPerSecond_ * thousand + leftOver_;
    const Wide whole = divideDown(position, divisor());
    const auto rest = static_cast<std::int64_t>(position - whole * divisor());
    const std::int64_t before = divisor();
    baseTick_ = tick;
    baseTime_ += static_cast<std::int64_t>(whole);
    tempo_ = clampTempo(tempo);
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
