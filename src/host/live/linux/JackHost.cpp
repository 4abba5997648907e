#include "host/live/JackHost.h"

#include "host/live/linux/JackSystem.h"

namespace Host {

Platform::Result<std::unique_ptr<MidiSystem>> openJack(const PortWishes& wishes, std::chrono::nanoseconds patience) {
    auto system = JackSystem::open(wishes, patience);
    if (!system) {
        return system.fault();
    }
    return std::unique_ptr<MidiSystem>(std::move(system.value()));
}

} // namespace Host
