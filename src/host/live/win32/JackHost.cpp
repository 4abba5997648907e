#include "host/live/JackHost.h"

namespace Host {

Platform::Result<std::unique_ptr<MidiSystem>> openJack(const PortWishes&, std::chrono::nanoseconds) {
    return Platform::Fault{{}, 0, "there is no JACK on Windows"};
}

} // namespace Host
