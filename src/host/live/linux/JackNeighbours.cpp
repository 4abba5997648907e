#include "host/live/linux/JackNeighbours.h"

#include <memory>

namespace Host {

namespace {

struct NameListDeleter {
    void operator()(const char** names) const { jack_free(names); }
};

} // namespace

void JackNeighbours::unregistered(const jack_port_t* port) {
    const std::lock_guard lock(mutex_);
    unregistered_.insert(port);
}

std::vector<std::string> JackNeighbours::list(jack_client_t* client, PortDirection direction) {
    std::vector<std::string> names;
    const unsigned long flags = direction == PortDirection::in ? JackPortIsOutput : JackPortIsInput;
    const std::unique_ptr<const char*, NameListDeleter> found(
        jack_get_ports(client, nullptr, JACK_DEFAULT_MIDI_TYPE, flags));
    for (const char* const* name = found.get(); name != nullptr && *name != nullptr; ++name) {
        const jack_port_t* const port = jack_port_by_name(client, *name);
        if (port != nullptr && jack_port_is_mine(client, port) == 0) {
            names.emplace_back(*name);
            listed_[port] = *name;
        }
    }
    return names;
}

std::set<std::string> JackNeighbours::takeGone() {
    std::set<const jack_port_t*> gone;
    {
        const std::lock_guard lock(mutex_);
        gone.swap(unregistered_);
    }
    std::set<std::string> names;
    for (const jack_port_t* const port : gone) {
        if (const auto known = listed_.find(port); known != listed_.end()) {
            names.insert(known->second);
            listed_.erase(known);
        }
    }
    return names;
}

void JackNeighbours::clear() {
    static_cast<void>(takeGone());
    listed_.clear();
}

} // namespace Host
