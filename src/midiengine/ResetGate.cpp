#include "midiengine/ResetGate.h"

#include <mutex>

namespace Backend::MidiEngine {

void ResetGate::clockIsHere() {
    if (!isClockThread()) {
        clockThread_.store(Platform::currentThreadId(), std::memory_order_relaxed);
        clockRuns_ = true;
    }
}

bool ResetGate::isClockThread() const {
    return clockThread_.load(std::memory_order_relaxed) == Platform::currentThreadId();
}

void ResetGate::pass(Reset reset, const std::function<void()>& ask) {
    const std::lock_guard<CriticalSection> guard(oneAtATime_);
    const unsigned char source = player_.getTempoSource();
    player_.setTempoSource(MidiPlayer::waitingForSlice);
    ask();
    eventOf(reset).wait();
    player_.setTempoSource(source);
}

} // namespace Backend::MidiEngine
