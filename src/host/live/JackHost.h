// JACK, where the system has it.
#pragma once

#include "host/live/MidiSystem.h"
#include "host/live/PortWishes.h"
#include "platform/Result.h"

#include <chrono>
#include <memory>

namespace Host {

// A fault when no server answers within `patience`, or there is no port for a wish; at once where there is no JACK.
// [main]
[[nodiscard]] Platform::Result<std::unique_ptr<MidiSystem>> openJack(const PortWishes& wishes,
                                                                     std::chrono::nanoseconds patience);

} // namespace Host
