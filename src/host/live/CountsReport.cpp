#include "host/live/CountsReport.h"

#include <cstdint>
#include <iostream>

namespace Host {

void reportCounts(const MidiSystemCounts& counts) {
    const auto say = [](std::uint64_t count, const char* what) {
        if (count > 0) {
            std::cerr << count << ' ' << what << '\n';
        }
    };
    say(counts.sysExDropped, "system exclusive messages were passed over");
    say(counts.malformedDropped, "malformed messages were passed over");
    say(counts.arrivalsLost, "incoming messages were lost for want of room");
    say(counts.unsendable, "messages could not be sent");
    say(counts.overflows, "messages were held up or lost because a port was full");
    say(counts.late, "messages left late");
}

} // namespace Host
