#include "host/live/PortRoster.h"

namespace Host {

PortRoster::Changes PortRoster::update(const std::vector<std::string>& names) {
    Changes changes;
    std::vector<bool> found(ports_.size(), false);
    for (const std::string& name : names) {
        std::size_t place = 0;
        while (place < found.size() && (found[place] || ports_[place].name != name)) {
            ++place;
        }
        if (place == found.size()) {
            if (ports_.size() == maxPlaces) {
                continue;
            }
            ports_.push_back({name});
            found.push_back(false);
        }
        found[place] = true;
        if (!ports_[place].present) {
            ports_[place].present = true;
            changes.appeared.push_back(static_cast<int>(place));
        }
    }
    for (std::size_t place = 0; place < found.size(); ++place) {
        if (ports_[place].present && !found[place]) {
            ports_[place].present = false;
            changes.vanished.push_back(static_cast<int>(place));
        }
    }
    return changes;
}

} // namespace Host
