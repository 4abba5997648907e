#include "midiengine/ZoneMap.h"

namespace Backend::Zones {

const Zone* ZoneMap::find(std::int8_t id) const {
    if (id < 0) {
        return nullptr;
    }
    const std::optional<Zone>& zone = zones_[static_cast<std::size_t>(id)];
    return zone ? &*zone : nullptr;
}

Zone* ZoneMap::find(std::int8_t id) {
    return const_cast<Zone*>(static_cast<const ZoneMap*>(this)->find(id));
}

void ZoneMap::set(const Zone& zone) {
    std::optional<Zone>& place = zones_[static_cast<std::size_t>(zone.id)];
    size_ += place ? 0 : 1;
    place = zone;
}

void ZoneMap::clear() {
    zones_.fill(std::nullopt);
    size_ = 0;
}

void ZoneMap::selectLowest() {
    bool first = true;
    forEach([&first](Zone& zone) {
        zone.selected = first;
        first = false;
    });
}

const Zone* ZoneMap::selected() const {
    for (const std::optional<Zone>& zone : zones_) {
        if (zone && zone->selected) {
            return &*zone;
        }
    }
    return nullptr;
}

} // namespace Backend::Zones
