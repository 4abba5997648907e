#include "host/live/StopSignalNumbers.h"

#include <csignal>

namespace Host {

std::span<const int> stopSignalNumbers() noexcept {
    static constexpr int numbers[] = {SIGINT, SIGTERM, SIGBREAK};
    return numbers;
}

} // namespace Host
