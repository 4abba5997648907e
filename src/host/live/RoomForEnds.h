// Keeps room for what ends notes in queues that nobody empties for a while.
#pragma once

#include "host/live/MidiBytes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Host {

// A message that finds no room is lost, which costs a Note On no more than its note; but without its Note Off a note
// sounds for ever. Used by one thread at a time; allocates nothing after construction.
class RoomForEnds final {
public:
    // From `limit` waiting messages on, only ends of notes whose begin was admitted are. Places are 0..places-1.
    RoomForEnds(int places, std::size_t limit);

    // Whether the message may be queued for that output, behind `waiting` others.
    [[nodiscard]] bool admits(int place, const MidiBytes& message, std::size_t waiting) noexcept;
    // Nothing sounds.
    void clear() noexcept;

private:
    std::size_t limit_;
    std::vector<std::uint8_t> begun_; // how often, for each place, channel and note; 255: or more
};

} // namespace Host
