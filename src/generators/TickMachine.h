// Something that acts on the engine's clock.
#pragma once

#include "values/Ticks.h"

namespace Backend {

// While anything that runs by ticks is playing, be it this machine or another, each tick is given exactly once, in
// order, behind the events of that tick; also when a tick is run again to take in late events, or is run again because
// something began to play in it. While nothing plays no ticks are given: the first one after a silence has no
// predecessor. After the clock has been set back, ticks begin anew from the earlier time. [clock, under the engine
// lock]
class TickMachine {
public:
    // Acts on the tick `now`; also while this machine itself is not playing.
    virtual void advance(Ticks now) = 0;
    // True while it needs every tick. Asked for each tick: must be cheap.
    [[nodiscard]] virtual bool isPlaying() const = 0;

protected:
    ~TickMachine() = default;
};

} // namespace Backend
