// How slices become ticks, and what a tick plays.
#include "midiengine/MidiEngine.h"
#include "midiengine/MidiPlayer.h"

#include <algorithm>
#include <cmath>
#include <mutex>

namespace Backend::MidiEngine {

Ticks MidiEngine::milliseconds2Ppq(double milliseconds, int tempo) {
    return engineTimeOrigin +
           Ticks{static_cast<std::int32_t>(std::floor(tempo / 60000.0 * milliseconds * ticksPerQuarter + 0.5))};
}

void MidiEngine::playTimeSlice(Ticks from, Ticks to) {
    const std::lock_guard<CriticalSection> guard(criticalSection_);
    resets_.clockIsHere();
    now_ = from;
    ++sliceNumber_;
    if (to < from || from < lastTick_) { // time goes back
        lastTick_ = lastGiven_ = lastStamp_ = noTicks;
    }
    const Ticks earliest = from <= to ? from : noTicks;
    pending_.drainInbox([&](const QelMidiMessage& message) { takeIn(message, std::max(to, lastStamp_), earliest); });
    if (from <= to) {
        if ((to - from).count < MAX_TIME_SLICE && from < to) {
            pending_.catchUp(from);
            for (Ticks t = from; t < to; ++t) {
                if (!actsOnTicks()) { // nothing happens before the next event
                    const Ticks next = pending_.next();
                    if (next < t || !(next < to)) {
                        break;
                    }
                    t = next;
                }
                processPpq(t, from);
            }
            lastTick_ = to - Ticks{1};
        }
    } else { // the clock was set back: what waits for the times between is played on both sides of the step
        constexpr Ticks around{10};
        for (Ticks t = from; t < from + around; ++t) {
            processPpq(t, to);
        }
        lastGiven_ = noTicks;
        for (Ticks t = to - around; t < to; ++t) {
            processPpq(t, noTicks);
        }
    }
    now_ = noTicks;
}

// Untimed messages are stamped with `stamp`; a timed one is too late when it is from before `earliest`.
void MidiEngine::takeIn(const QelMidiMessage& message, Ticks stamp, Ticks earliest) {
    if (message.isQelReset()) {
        reset();
        resets_.done(Reset::soft);
    } else if (message.isQelHardReset()) {
        hardReset();
        resets_.done(Reset::hard);
    } else {
        QelMidiMessage stamped = message;
        if (!message.isTimedEvent()) {
            stamped.setPpq(stamp);
            lastStamp_ = stamp; // a tick that is run again must not let what comes then overtake this
        } else if (message.getPpq() < earliest && earliest <= lastStamp_) {
            stamped.setPpq(lastStamp_); // nor may what comes too late
        }
        pending_.schedule(stamped);
    }
}

void MidiEngine::processPpq(Ticks ppq, Ticks earliest) {
    if (ppq.count < 0) {
        return;
    }
    now_ = ppq;
    if (startTime() < ppq && ppq > lastGiven_ && startTime() != noTicks &&
        (ppq - startTime()).count % ticksPerQuarter == 0) {
        pulseSequencer();
    }
    pending_.playRange(earliest, ppq, [this, ppq](QelMidiMessage& message) {
        message.setPpq(ppq);
        playMidi(message);
    });
    if (ppq > lastGiven_ && actsOnTicks()) {
        lastGiven_ = ppq;
        layers_.advance(ppq, *this);
        updateStartTime();
        oscillators_.advance(ppq);
    }
}

bool MidiEngine::isTickDependent() {
    const std::lock_guard<CriticalSection> guard(criticalSection_);
    return actsOnTicks();
}

bool MidiEngine::actsOnTicks() const {
    return layers_.isRunning() || oscillators_.isPlaying();
}

void MidiEngine::updateStartTime() {
    if (!layers_.isRunning()) {
        setStartTime(noTicks);
    }
}

// Notes that are played by beats keep the place within its tick of the message with which the beats began, so that the
// first of them, which sounds at once, stands on the same grid.
void MidiEngine::beginTime(Ticks now, std::int64_t hostTime) {
    setStartTime(now);
    const MidiPlayer::TickTime tick = player_.tickTime();
    hostTimePastTick_ = tick.begin >= 0 && hostTime >= tick.begin && hostTime < tick.end ? hostTime - tick.begin : 0;
}

std::int64_t MidiEngine::hostTimeOfTick() {
    const MidiPlayer::TickTime tick = player_.tickTime();
    return tick.begin < 0 ? -1
                          : tick.begin + std::clamp<std::int64_t>(hostTimePastTick_, 0,
                                                                  std::max<std::int64_t>(tick.end - tick.begin - 1, 0));
}

bool MidiEngine::isBusy() {
    const std::lock_guard<CriticalSection> guard(criticalSection_);
    return actsOnTicks() || sounding_.places() > 0 || !pending_.isEmpty() || !pending_.inboxIsEmpty();
}

} // namespace Backend::MidiEngine
