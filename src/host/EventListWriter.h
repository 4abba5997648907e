// The event list of a rendering as text.
#pragma once

#include "host/EventSink.h"
#include "host/ResultFile.h"

#include <string>

namespace Host {

// Writes a line of appendEventLine for each message. Tempo leaves no trace.
class EventListWriter final : public EventSink {
public:
    // `target` is a file or "-" for standard output; nothing is written before open().
    explicit EventListWriter(const std::string& target);

    [[nodiscard]] Platform::Outcome open() { return file_.open(); }
    void play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) override;
    void setTempo(std::int32_t, int) override {}
    [[nodiscard]] bool isGood() const override { return file_.isGood(); }
    [[nodiscard]] Platform::Outcome finish(std::int32_t tick) override;

private:
    ResultFile file_;
    std::string buffer_;
};

} // namespace Host
