// What the host does for the engine: MIDI output, port opening, tempo and the clock.
#pragma once

#include "values/QelMidiMessage.h"

#include <cstdint>

namespace Backend::MidiEngine {

// Implemented by the host, which also owns the clock thread: it calls MidiEngine::playTimeSlice again and again.
class MidiPlayer {
public:
    virtual ~MidiPlayer() = default;

    // Sends a message on the output port that it names. `getPpq()` is the tick at which it is played, -1 for one
    // that must go at once. Must not block, allocate or throw. [clock; any thread under the engine lock]
    virtual void play(const QelMidiMessage& message, bool keepHeldNotes) = 0;

    // Opens or closes a port. The host then posts its changed port list (postSetMidiInputPorts,
    // postSetMidiOutputPorts), in which `enabled` says what came of it. [engine]
    virtual void enableMidiInput(int port, bool on) = 0;
    virtual void enableMidiOutput(int port, bool on) = 0;

    // The device's time, in the unit of QelMidiMessage::getHostTime, of the tick that is being played right now, and of
    // the tick after it; -1: none, as while no tick is played. [clock; any thread under the engine lock]
    struct TickTime {
        std::int64_t begin = -1;
        std::int64_t end = -1;
    };
    [[nodiscard]] virtual TickTime tickTime() { return {}; }

    // Something was put into the engine's pending queue: a clock that sleeps may wake and take it in. Must not
    // block. [any]
    virtual void eventsArrived() = 0;

    // Beats a minute, 10..500. Takes effect at the next tick. [engine]
    virtual void setTempo(int beatsPerMinute) = 0;

    // The tempo source while the engine waits for a slice (it is resetting): slices must be called whatever the source
    // was.
    static constexpr unsigned char waitingForSlice = 255;
    // 0: the internal clock; 1 + i: MIDI clock of input i; waitingForSlice. [any]
    virtual void setTempoSource(unsigned char source) = 0;
    [[nodiscard]] virtual unsigned char getTempoSource() = 0; // [any]
};

} // namespace Backend::MidiEngine
