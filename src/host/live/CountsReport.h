// Says what went wrong on the ports.
#pragma once

#include "host/live/MidiSystem.h"

namespace Host {

// A line on standard error for each count that is not 0. [main]
void reportCounts(const MidiSystemCounts& counts);

} // namespace Host
