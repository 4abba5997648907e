#include "host/live/PortLists.h"

#include <algorithm>
#include <utility>

namespace Host {

namespace {

template <typename Port> std::vector<Port> listOf(const PortRoster& roster, const std::string& system) {
    std::vector<Port> ports;
    for (const PortRoster::Port& known : roster.ports()) {
        Port port;
        port.name = known.name;
        port.system = system;
        port.present = known.present;
        port.enabled = known.present && known.open;
        ports.push_back(port);
    }
    return ports;
}

} // namespace

PortLists::PortLists(const PortWishes& wishes, std::string system, std::string ownPort, bool opensDevices)
    : arrangement_{wishes, std::move(ownPort), opensDevices}, system_(std::move(system)) {}

PortRoster& PortLists::roster(PortDirection direction) {
    return direction == PortDirection::in ? inputs_ : outputs_;
}

const PortRoster& PortLists::roster(PortDirection direction) const {
    return direction == PortDirection::in ? inputs_ : outputs_;
}

Platform::Outcome PortLists::arrange(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs) {
    const std::lock_guard lock(mutex_);
    return arrangement_.arrange(inputs_, inputs, outputs_, outputs);
}

bool PortLists::update(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs) {
    const std::lock_guard lock(mutex_);
    return arrangement_.update(inputs_, inputs, outputs_, outputs);
}

bool PortLists::settle(PortDirection direction, const Settle& settle) {
    bool changed = false;
    for (int place = 0; place < PortRoster::maxPlaces; ++place) {
        PortRoster::Port port;
        {
            const std::lock_guard lock(mutex_);
            if (!roster(direction).has(place)) {
                break;
            }
            port = roster(direction).at(place);
        }
        const bool isOpen = settle(place, port.name, port.present && port.wanted);
        changed = changed || isOpen != port.open;
        const std::lock_guard lock(mutex_);
        roster(direction).at(place).open = isOpen;
    }
    return changed;
}

int PortLists::repetition(PortDirection direction, int place) const {
    const std::lock_guard lock(mutex_);
    const auto first = roster(direction).ports().begin();
    return static_cast<int>(std::count_if(
        first, first + place, [&](const PortRoster::Port& port) { return port.name == (first + place)->name; }));
}

std::vector<Backend::MidiInputPort> PortLists::inputs() const {
    const std::lock_guard lock(mutex_);
    return listOf<Backend::MidiInputPort>(inputs_, system_);
}

std::vector<Backend::MidiOutputPort> PortLists::outputs() const {
    const std::lock_guard lock(mutex_);
    return listOf<Backend::MidiOutputPort>(outputs_, system_);
}

bool PortLists::enable(PortDirection direction, int place, bool on) {
    const std::lock_guard lock(mutex_);
    const bool isThere = roster(direction).has(place);
    if (isThere) {
        roster(direction).at(place).wanted = on;
    }
    return isThere;
}

} // namespace Host
