// The layers at work, in list order.
#pragma once

#include "midiengine/LayerList.h"
#include "midiengine/PlayingLayer.h"

#include <array>
#include <cstdint>
#include <vector>

namespace Backend::MidiEngine {

// Every event is offered to the soloed layers, or, while none is soloed, to those that are not muted.
// [clock, under the engine lock]
class LayerRack final {
public:
    LayerRack() = default;
    LayerRack(const LayerRack&) = delete;
    LayerRack& operator=(const LayerRack&) = delete;

    // Replaces all layers by copies with nothing held. Those at the same place that are set up alike go on where they
    // were paused.
    void set(const Layers::LayerList& layers);

    void noteOn(const QelMidiMessage& message, LayerOutput& engine);
    void noteOff(const QelMidiMessage& message, LayerOutput& engine);
    // A message that is no note goes to each output and channel once, however many layers point there.
    void other(const QelMidiMessage& message, LayerOutput& engine);

    // Whether a layer asks for velocities, so that a Note Off must carry the velocity of its Note On.
    [[nodiscard]] bool hasVelocityRange() const { return hasVelocityRange_; }

    // One tick, behind its events, for what plays by ticks.
    void advance(Ticks now, LayerOutput& engine);
    // The next step for sequences without arpeggio.
    void pulse();
    // True while something needs every tick.
    [[nodiscard]] bool isRunning() const { return running_; }
    // A key that was held while the layers were exchanged: for arpeggios only. True when one has taken it.
    [[nodiscard]] bool resume(const QelMidiMessage& noteOn, LayerOutput& engine);
    // What was paused and has not gone on begins anew next time.
    void forgetPauses();

    // `pausing`: what is held next goes on where this stopped.
    void reset(bool pausing);
    void forgetOutput(std::int8_t output);

private:
    // Work of some layers in turn, each known to the engine as the one that sends.
    template <typename Work>
    void inTurn(const std::vector<PlayingLayer*>& layers, LayerOutput& engine, const Work& work);
    void watch();

    std::vector<PlayingLayer> layers_;
    std::vector<PlayingLayer*> takingPart_;
    std::vector<PlayingLayer*> machines_; // of those that take part
    bool hasVelocityRange_ = false;
    bool running_ = false;
    std::array<std::uint32_t, std::size_t{128} * 16> lastPass_{}; // by output and channel: the pass that sent there
    std::uint32_t pass_ = 0;
};

} // namespace Backend::MidiEngine
