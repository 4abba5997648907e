// One tick as an arpeggio sees it.
#pragma once

#include "midiengine/LayerOutput.h"
#include "values/Ticks.h"

#include <cstdint>

namespace Backend::ArpeggioManagement {

// Beats are counted from the engine's start time: the tick at which, after a silence, the first note of any layer's
// arpeggio or sequence was played. [clock]
class ArpeggioBeat final {
public:
    ArpeggioBeat(Ticks now, MidiEngine::LayerOutput& engine) : now_(now), engine_(engine) {}

    [[nodiscard]] Ticks now() const { return now_; }
    // A note may start: a beat begins now, or nothing runs yet.
    [[nodiscard]] bool mayStart(std::int32_t beat) const { return engine_.startTime() == noTicks || isOnBeat(beat); }
    // A beat begins now; not before anything has started.
    [[nodiscard]] bool isOnBeat(std::int32_t beat) const {
        return engine_.startTime() != noTicks && (now_ - engine_.startTime()).count % beat == 0;
    }
    // The beats begin here unless they have begun. `hostTime`: of the message whose note starts.
    void start(std::int64_t hostTime) const {
        if (engine_.startTime() == noTicks) {
            engine_.beginTime(now_, hostTime);
        }
    }

private:
    Ticks now_;
    MidiEngine::LayerOutput& engine_;
};

} // namespace Backend::ArpeggioManagement
