// The clock thread of the live player.
#pragma once

#include "host/live/TempoSync.h"
#include "midiengine/MidiPlayer.h"
#include "values/Ticks.h"

#include <chrono>

namespace Host {

// Calls the engine's slices by a device's time. It owns its thread, which runs from start() to stop().
class Clock {
public:
    virtual ~Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;

    virtual void start() = 0; // [main] once
    virtual void stop() = 0;  // [main] waits for the end of the thread; harmless when repeated

    // The engine has something new to take in. Neither blocks nor locks, and wakes the thread only where that hastens
    // anything: while the engine acts on each tick, what has arrived waits for the next one. [any]
    virtual void eventsArrived() noexcept = 0;
    // Somebody waits for a slice, whatever the engine is doing. [any]
    virtual void wake() noexcept = 0;

    // Beats a minute, clamped to 10..500, from the next tick on; while a source is heard, when it is not any more.
    // [any]
    virtual void setTempo(int beatsPerMinute) noexcept = 0;
    // What sets the tempo, and the tempo that is played.
    [[nodiscard]] virtual TempoSync& sync() noexcept = 0;
    [[nodiscard]] virtual const TempoSync& sync() const noexcept = 0;
    // The tick that was run last; engineTimeOrigin - 1 before the first. [any]
    [[nodiscard]] virtual Backend::Ticks now() const noexcept = 0;
    // The device's times of the tick that is being played, where messages have such times. [any thread under the engine
    // lock]
    [[nodiscard]] virtual Backend::MidiEngine::MidiPlayer::TickTime tickTime() const noexcept { return {}; }
    // What each message is kept for, so that all of them leave evenly; 0: each leaves as soon as it can. [any]
    [[nodiscard]] virtual std::chrono::nanoseconds evenLatency() const noexcept { return {}; }

protected:
    Clock() = default;
};

} // namespace Host
