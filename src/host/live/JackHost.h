// JACK, where the system has it.
#pragma once

#include "host/live/MidiSystem.h"
#include "host/live/PortWishes.h"
#include "platform/Result.h"

#include <chrono>
#include <memory>

namespace Host {

// Null when no server answers within `patience`, at once where there is none, or no JACK. A fault when there is no port
// for a wish. [main]
[[nodiscard]] Platform::Result<std::unique_ptr<MidiSystem>> openJack(const PortWishes& wishes,
                                                                     std::chrono::nanoseconds patience);

} // namespace Host
