#include "host/live/NoSystem.h"

#include "host/live/SleepingClock.h"

namespace Host {

namespace {

template <typename Port> std::vector<Port> portsOf(const std::vector<std::string>& names) {
    std::vector<Port> ports;
    for (const std::string& name : names) {
        Port port;
        port.name = name;
        port.system = "none";
        port.enabled = true;
        ports.push_back(port);
    }
    return ports;
}

} // namespace

NoSystem::NoSystem(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs)
    : inputs_(portsOf<Backend::MidiInputPort>(inputs)), outputs_(portsOf<Backend::MidiOutputPort>(outputs)) {}

std::unique_ptr<Clock> NoSystem::createClock(ClockedEngine& engine) {
    return std::make_unique<SleepingClock>(engine);
}

} // namespace Host
