// A layer at work: which notes it holds and where they went.
#pragma once

#include "midiengine/Layer.h"
#include "midiengine/LayerMachine.h"
#include "midiengine/LayerOutput.h"
#include "midiengine/SoundingNotes.h"
#include "values/QelMidiMessage.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <vector>

namespace Backend::MidiEngine {

// [clock, under the engine lock]
class PlayingLayer final {
public:
    explicit PlayingLayer(const Layers::Layer& settings);

    [[nodiscard]] const Layers::Layer& settings() const { return settings_; }

    void noteOn(const QelMidiMessage& message, LayerOutput& engine);
    void noteOff(const QelMidiMessage& message, LayerOutput& engine);
    // True when a controller, pitch bend or other message is for this layer; gives where it goes.
    [[nodiscard]] bool takesOther(const QelMidiMessage& message, const LayerOutput& engine,
                                  QelMidiMessage& placed) const;

    // What the layer plays by ticks; null without arpeggio and sequence.
    [[nodiscard]] LayerMachine* machine() const { return machine_.get(); }
    // True while the machine needs every tick.
    [[nodiscard]] bool isRunning() const {
        return machine_ && (machine_->isRunning() || (!machine_->hasArpeggio() && !stack_.empty()));
    }

    // Forgets all notes; they are ended elsewhere. `pausing`: the arpeggio goes on where it stopped.
    void reset(bool pausing);
    // An output is closed: nothing of ours sounds there.
    void forgetOutput(std::int8_t output);

private:
    // A key that is down, or a note that is toggled on.
    struct StackedNote {
        std::int8_t note = -1; // as it reached the layer
        std::int8_t velocity = 0;
        std::int8_t input = -1; // who pressed it
        std::int8_t zone = -1;
        NotePlace place; // where it sounds now; none while a newer note of a mono layer plays
        bool heard = false;
        LayerMachine::Voice voice = 0; // of the machine

        [[nodiscard]] Beginning beginning() const {
            return !place.exists() ? Beginning::none : heard ? Beginning::heard : Beginning::unheard;
        }
    };
    [[nodiscard]] bool takes(const QelMidiMessage& message) const;
    [[nodiscard]] bool route(QelMidiMessage& message, const LayerOutput& engine) const;
    void start(QelMidiMessage message, StackedNote& note, LayerOutput& engine) const;
    void end(QelMidiMessage message, const StackedNote& note, LayerOutput& engine) const;
    void endUnknown(QelMidiMessage message, LayerOutput& engine) const;
    void startStacked(const QelMidiMessage& message, LayerOutput& engine);
    void startMono(const QelMidiMessage& message, LayerOutput& engine, bool toggling);
    void endToggled(const QelMidiMessage& message, LayerOutput& engine);
    [[nodiscard]] std::vector<StackedNote>::iterator findOnStack(std::int8_t note, std::int8_t input, std::int8_t zone);

    Layers::Layer settings_;
    std::array<std::int8_t, 128> noteOf_{};     // what the settings make of each note
    std::array<std::int8_t, 128> velocityOf_{}; // and of each velocity
    std::vector<StackedNote> stack_;            // in press order
    std::bitset<128> toggledOn_;
    std::unique_ptr<LayerMachine> machine_;
};

} // namespace Backend::MidiEngine
