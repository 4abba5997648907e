#include "host/live/JackHost.h"

namespace Host {

Platform::Result<std::unique_ptr<MidiSystem>> openJack(const PortWishes&, std::chrono::nanoseconds) {
    return std::unique_ptr<MidiSystem>{};
}

} // namespace Host
