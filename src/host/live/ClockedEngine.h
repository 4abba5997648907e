// What a clock drives.
#pragma once

#include "values/Ticks.h"

#include <cstdint>

namespace Host {

// What a transport that is followed does.
enum class Transport { start, goOn, stop };

// The engine as the clock sees it.
class ClockedEngine {
public:
    // Plays the ticks from `from` up to `to` - 1; (t, t) takes in what is pending, stamps what has no time with t, and
    // plays nothing. [clock]
    virtual void playTimeSlice(Backend::Ticks from, Backend::Ticks to) = 0;
    // False while a tick that is run again plays only what has arrived since. [clock]
    [[nodiscard]] virtual bool isTickDependent() = 0;
    // Time has jumped: whoever may wait for the clock ends all that sounds. Does not block. [clock]
    virtual void timeJumped() = 0;
    // The transport of the tempo source begins, at that sixteenth of the song, with the next clock, or halts. [clock]
    virtual void transportChanged(Transport, std::int32_t /*sixteenth*/) {}

protected:
    ~ClockedEngine() = default;
};

} // namespace Host
