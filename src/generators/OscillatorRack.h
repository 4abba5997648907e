// The oscillators as the engine plays them.
#pragma once

#include "generators/OscList.h"
#include "generators/OscillatorOutput.h"
#include "generators/RunningOscillator.h"
#include "generators/TickMachine.h"
#include "values/OscId.h"
#include "values/Ticks.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Backend::Oscillators {

// Those that do not play cost nothing in a tick. All under the engine lock.
class OscillatorRack final : public TickMachine {
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
    void advance(Ticks now) override;
    [[nodiscard]] bool isPlaying() const override { return !playing_.empty(); }

private:
    [[nodiscard]] RunningOscillator* find(OscId id);
    void listPlaying();

    OscillatorOutput& output_;
    std::vector<RunningOscillator> oscillators_;
    std::vector<std::size_t> playing_; // their places, ascending; has room for all
};

} // namespace Backend::Oscillators
