// The oscillators as the engine plays them.
#pragma once

#include "generators/OscList.h"
#include "generators/OscillatorOutput.h"
#include "generators/RunningOscillator.h"
#include "values/OscId.h"
#include "values/Ticks.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Backend::Oscillators {

// While anything that runs by ticks is playing, be it an oscillator or a layer, the rack is given each tick exactly
// once, in order, behind the events of that tick; also when a tick is run again to take in late events, or is run again
// because something began to play in it. While nothing plays no ticks are given: the first one after a silence has no
// predecessor. After the clock has been set back, ticks begin anew from the earlier time. Oscillators that do not play
// cost nothing in a tick. All under the engine lock.
class OscillatorRack final {
public:
    // `output` outlives the rack.
    explicit OscillatorRack(OscillatorOutput& output) : output_(output) {}

    // Replaces all; each begins its wave. Those that played and whose successors do not are stopped: their stop
    // values are sent at once. Allocates.
    void set(const OscList& list);
    // Unknown ids change nothing. Gives the stop value of one that stops and has one.
    std::optional<MidiEngine::QelMidiMessage> setPlaying(OscId id, bool on);
    void setSpeed(OscId id, std::int32_t speed);

    // One tick of those that play, in the order of their ids.
    void advance(Ticks now); // [clock]
    // True while it needs every tick.
    [[nodiscard]] bool isPlaying() const { return !playing_.empty(); }

private:
    [[nodiscard]] RunningOscillator* find(OscId id);
    void listPlaying();

    OscillatorOutput& output_;
    std::vector<RunningOscillator> oscillators_;
    std::vector<std::size_t> playing_; // their places, ascending; has room for all
};

} // namespace Backend::Oscillators
