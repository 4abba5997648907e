// Where the engine's ticks stand on a device's time.
#pragma once

#include "host/live/Tempo.h"

#include <cstdint>

namespace Host {

// Time is counted in whole units of the device (frames, nanoseconds). Between two tempo changes the time of a tick is
// a fixed fraction of the tick's number, so that nothing adds up over the days; the part of a unit that is left over at
// a tempo change is kept, to the nearest 1 / (8000 x tempo) of a unit. Ticks here are engine ticks, 480 a quarter note.
class TickGrid final {
public:
    static constexpr Tempo slowestTempo = 5;
    static constexpr Tempo fastestTempo = 1200;

    // The tick `tick` stands at `time` exactly. `unitsPerSecond` is at most 1,000,000,000.
    TickGrid(std::int64_t unitsPerSecond, std::int32_t tick, std::int64_t time, Tempo tempo) noexcept;

    // The unit in which the tick begins. Good for ticks from the last tempo change on.
    [[nodiscard]] std::int64_t timeOf(std::int32_t tick) const noexcept;
    // The last tick that begins at `time` or before.
    [[nodiscard]] std::int32_t tickAt(std::int64_t time) const noexcept;
    // The same with the part of a tick that has passed since: how many ticks `time` lies behind `tick`.
    [[nodiscard]] double ticksFrom(std::int32_t tick, std::int64_t time) const noexcept;

    // The ticks from `tick` on follow at this tempo, clamped to slowestTempo..fastestTempo; `tick` itself stays where
    // it is.
    void setTempo(std::int32_t tick, Tempo tempo) noexcept;
    // The tick called `tick` is called `newName` from now on; no time changes.
    void rename(std::int32_t tick, std::int32_t newName) noexcept;

    [[nodiscard]] Tempo tempo() const noexcept { return tempo_; }
    [[nodiscard]] std::int64_t unitsPerSecond() const noexcept { return unitsPerSecond_; }

private:
    // A tick lasts 1000 x unitsPerSecond_ / divisor() units: 60 seconds over 480 x tempo.
    [[nodiscard]] std::int64_t divisor() const noexcept { return std::int64_t{8} * tempo_.thousandths; }

    std::int64_t unitsPerSecond_;
    std::int64_t baseTime_;
    std::int64_t leftOver_ = 0; // of a unit, in divisor()ths, below divisor()
    std::int32_t baseTick_;
    Tempo tempo_;
};

} // namespace Host
