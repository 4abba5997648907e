// A Standard MIDI File as a performance.
#pragma once

#include "host/Performance.h"
#include "host/SmfTrack.h"
#include "platform/Result.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Host {

// Formats 0 and 1 with a division in ticks a quarter note. The tracks are merged while they are read: no list of
// events is built, so that beside the file itself only a cursor a track is held. Gives MidiArrives (on port 0 or the
// one that a Port meta event of the track names) and SetTempo, at round-half-up(time x 480 / division), within a tick
// in the order of the tracks. SysEx, escapes and other metas are passed over.
class SmfReader final : public Performance {
public:
    // True of content that begins like a Standard MIDI File.
    [[nodiscard]] static bool recognises(std::string_view content) noexcept;

    // Checks the whole file, which `name` names in faults; they give the byte that is wrong. Messages for a port from
    // `inputs` on are a fault.
    [[nodiscard]] static Platform::Result<std::unique_ptr<SmfReader>> open(std::string content, const std::string& name,
                                                                           int inputs);

    [[nodiscard]] bool next(PerformanceEvent& event) override;

private:
    SmfReader(std::string content, const std::string& name) : content_(std::move(content)), name_(name) {}

    [[nodiscard]] Platform::Outcome readChunks();
    [[nodiscard]] Platform::Outcome readHeader();
    [[nodiscard]] Platform::Outcome checkTrack(SmfTrack track, int inputs) const;
    void startMerging();
    // The tick of a time of the file; above latestTick for one that is too late.
    [[nodiscard]] std::int64_t tickOf(std::uint64_t time) const noexcept;
    void enter(std::size_t track) noexcept;
    [[nodiscard]] const std::uint8_t* bytes() const noexcept;
    [[nodiscard]] std::uint32_t numberAt(std::size_t position, int size) const noexcept;
    [[nodiscard]] Platform::Fault fault(std::size_t position, const std::string& reason) const;

    std::string content_;
    std::string name_;
    std::size_t trackCount_ = 0;
    std::uint32_t division_ = 480;
    std::uint32_t wholeFactor_ = 1; // our ticks a tick of the file, 0 when that is no whole number
    std::vector<SmfTrack> tracks_;
    std::vector<SmfTrack::Found> found_; // of each track, what stands next in it
    // The tournament of the tracks, each with its next tick and, below that, its number: the least wins. Place 1 is the
    // final, the second half are the tracks, and each place before holds the winner of the two at twice its number.
    std::vector<std::uint64_t> winners_;
    int tempo_ = 0; // the last one given; 0 before the first
};

} // namespace Host
