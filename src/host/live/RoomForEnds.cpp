#include "host/live/RoomForEnds.h"

#include <algorithm>

namespace Host {

RoomForEnds::RoomForEnds(int places, std::size_t limit)
    : limit_(limit), begun_(static_cast<std::size_t>(places) * 16 * 128) {}

bool RoomForEnds::admits(int place, const MidiBytes& message, std::size_t waiting) noexcept {
    const bool hasRoom = waiting < limit_;
    const unsigned kind = message.bytes[0] & 0xF0U;
    if (kind != 0x80 && kind != 0x90) {
        return hasRoom;
    }
    std::uint8_t& begun =
        begun_[(static_cast<std::size_t>(place) * 16 + (message.bytes[0] & 0x0FU)) * 128 + (message.bytes[1] & 0x7FU)];
    if (kind == 0x90 && message.bytes[2] != 0) {
        begun = static_cast<std::uint8_t>(begun + (hasRoom && begun < 255 ? 1 : 0));
        return hasRoom;
    }
    const bool ends = begun > 0;
    begun = static_cast<std::uint8_t>(begun - (ends ? 1 : 0));
    return ends || hasRoom;
}

void RoomForEnds::clear() noexcept {
    std::fill(begun_.begin(), begun_.end(), std::uint8_t{0});
}

} // namespace Host
