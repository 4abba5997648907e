// Where the events of a rendering go.
#pragma once

#include "platform/Result.h"

#include <cstdint>

namespace Backend::MidiEngine {
class QelMidiMessage;
}

namespace Host {

// Called by one thread at a time, in order of time: ticks from the start do not decrease. Failures to write are kept
// for finish().
class EventSink {
public:
    virtual ~EventSink() = default;

    // A message that was played on the output that it names.
    virtual void play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) = 0;
    // The tempo in beats a minute from `tick` on. The first comes before all messages.
    virtual void setTempo(std::int32_t tick, int beatsPerMinute) = 0;
    // False when nothing that follows can be kept any more.
    [[nodiscard]] virtual bool isGood() const = 0;
    // The end, once; `tick` is the first that was not played.
    [[nodiscard]] virtual Platform::Outcome finish(std::int32_t tick) = 0;
};

} // namespace Host
