// What the clock of another device says.
#pragma once

#include <cstdint>

namespace Host {

struct SyncMessage {
    std::int64_t time = 0; // in the units of the clock that is told
    std::uint8_t status = 0;
    std::uint8_t source = 0;     // the tempo source that it comes from
    std::int16_t sixteenths = 0; // of a Song Position
};

// Where a JACK server's transport is at the first frame of a period.
struct TransportReading {
    bool isRolling = false;
    bool hasTempo = false; // a timebase master says tempo and beat
    double tempo = 0;      // beats a minute
    double beats = 0;      // since the beginning, or a whole number of them less
};

} // namespace Host
