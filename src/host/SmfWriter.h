// A rendering as a Standard MIDI File.
#pragma once

#include "host/EventSink.h"
#include "host/ResultFile.h"
#include "host/SmfTrackWriter.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Host {

// Format 1, 480 ticks a quarter note, one track an output, named after it; the first also holds the tempo. Channel
// messages stand as they are, system messages in escape events, as they cannot stand bare. Memory stays the same
// however much is written. finish() ends what still sounds on an output, and puts the file in its place.
class SmfWriter final : public EventSink {
public:
    // At least one output; nothing is written before open().
    SmfWriter(const std::string& target, const std::vector<std::string>& outputNames);
    ~SmfWriter() override;

    [[nodiscard]] Platform::Outcome open();
    void play(std::int32_t tick, const Backend::MidiEngine::QelMidiMessage& message) override;
    void setTempo(std::int32_t tick, int beatsPerMinute) override;
    [[nodiscard]] bool isGood() const override;
    [[nodiscard]] Platform::Outcome finish(std::int32_t tick) override;

private:
    struct Track;
    void endNotes(Track& track, std::int32_t tick);

    std::string name_;
    std::vector<std::string> outputNames_;
    ResultFile file_;
    std::vector<std::unique_ptr<Track>> tracks_;
};

} // namespace Host
