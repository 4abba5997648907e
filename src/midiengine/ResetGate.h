// Resets that other threads ask for and the clock carries out.
#pragma once

#include "core/CriticalSection.h"
#include "midiengine/MidiPlayer.h"
#include "platform/AutoResetEvent.h"
#include "platform/Threads.h"

#include <atomic>
#include <functional>

namespace Backend::MidiEngine {

class ResetGate final {
public:
    enum class Reset { soft, hard };

    // The player outlives the gate.
    explicit ResetGate(MidiPlayer& player) : player_(player) {}

    // A slice is being played, on the calling thread. [clock]
    void clockIsHere();
    [[nodiscard]] bool isClockThread() const; // [any]
    // False while resets need not wait: the clock has never run, or it is the caller. [any]
    [[nodiscard]] bool mustWait() const { return clockRuns_ && !isClockThread(); }

    // Runs `ask`, which hands the reset to the clock, and waits until it is done. One at a time, so that each waiter is
    // released by its own. [any but clock] without the engine lock
    void pass(Reset reset, const std::function<void()>& ask);
    // The clock has carried it out. [clock]
    void done(Reset reset) { eventOf(reset).signal(); }

private:
    [[nodiscard]] Platform::AutoResetEvent& eventOf(Reset reset) {
        return reset == Reset::hard ? hardResetEvent_ : resetEvent_;
    }

    MidiPlayer& player_;
    CriticalSection oneAtATime_;
    Platform::AutoResetEvent resetEvent_;
    Platform::AutoResetEvent hardResetEvent_;
    std::atomic<bool> clockRuns_ = false;
    std::atomic<Platform::ThreadId> clockThread_ = 0;
};

} // namespace Backend::MidiEngine
