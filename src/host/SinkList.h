// Several sinks as one.
#pragma once

#include "host/EventSink.h"

#include <memory>
#include <vector>

namespace Host {

// Gives everything to each of its sinks, in their order; without any it takes everything and keeps nothing.
class SinkList final : public EventSink {
public:
    // Before anything was played.
    void add(std::vector<std::unique_ptr<EventSink>> sinks) { sinks_ = std::move(sinks); }

    void play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) override;
    void setTempo(std::int32_t tick, int beatsPerMinute) override;
    [[nodiscard]] bool isGood() const override;
    // Finishes all that can be; gives the first fault.
    [[nodiscard]] Platform::Outcome finish(std::int32_t tick) override;

private:
    std::vector<std::unique_ptr<EventSink>> sinks_;
};

} // namespace Host
