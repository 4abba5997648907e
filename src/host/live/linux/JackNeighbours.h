// The MIDI ports of the other clients of a JACK server.
#pragma once

#include "host/live/PortRoster.h"

#include <jack/jack.h>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace Host {

class JackNeighbours final {
public:
    // A port was unregistered. [JACK's notification thread]
    void unregistered(const jack_port_t* port);

    // Names of the others' ports that are there. [watcher]
    [[nodiscard]] std::vector<std::string> list(jack_client_t* client, PortDirection direction);
    // Listed ports that have gone since the last call; another may have taken the name meanwhile. [watcher]
    [[nodiscard]] std::set<std::string> takeGone();

    // Forgets everything: another server. [watcher]
    void clear();

private:
    std::mutex mutex_;
    std::set<const jack_port_t*> unregistered_; // under the mutex
    std::map<const jack_port_t*, std::string> listed_;
};

} // namespace Host
