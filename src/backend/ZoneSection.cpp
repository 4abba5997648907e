#include "backend/ZoneSection.h"

#include "backend/Selection.h"
#include "midiengine/ZoneXml.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace Backend {

namespace {
constexpr int largestTransposition = 127;

// The place of the zone that `which` names, where a fixed index is an id; -1: none.
int placeOf(const std::vector<std::int8_t>& ids, int id) {
    const auto found = std::find(ids.begin(), ids.end(), id);
    return found == ids.end() ? -1 : static_cast<int>(found - ids.begin());
}

SelectType byPlace(const SelectType& which, const std::vector<std::int8_t>& ids) {
    return which.getKind() == SelectType::Kind::fixed ? SelectType::fixed(placeOf(ids, which.getIndex())) : which;
}
} // namespace

void ZoneSection::set(const Zones::ZoneMap& zones) {
    zones_ = zones;
    engine_.postSetZoneMap(zones_);
}

void ZoneSection::read(const Platform::XmlElement& section) {
    Zones::ZoneMap zones = zones_;
    Zones::readZones(section, zones);
    set(zones);
}

void ZoneSection::write(std::ostream& out, int depth, bool) const {
    XmlWriter xml(out, depth);
    Zones::writeZones(xml, zones_);
}

std::vector<std::int8_t> ZoneSection::ids() const {
    std::vector<std::int8_t> ids;
    zones_.forEach([&ids](const Zones::Zone& zone) { ids.push_back(zone.id); });
    return ids;
}

void ZoneSection::select(const SelectType& which) {
    if (which.getKind() == SelectType::Kind::all) {
        zones_.forEach([](Zones::Zone& zone) { zone.selected = true; });
        return;
    }
    const std::vector<std::int8_t> all = ids();
    const Zones::Zone* current = zones_.selected();
    const int place = selectedPlace(byPlace(which, all), current != nullptr ? placeOf(all, current->id) : -1,
                                    static_cast<int>(all.size()));
    if (place >= 0) {
        zones_.forEach([&](Zones::Zone& zone) { zone.selected = zone.id == all[static_cast<std::size_t>(place)]; });
    }
}

void ZoneSection::changeTranspose(const SelectType& which, const RelativeFixedValue& semitones) {
    const std::vector<std::int8_t> all = ids();
    const Zones::Zone* current = zones_.selected();
    const std::vector<int> places = addressedPlaces(
        byPlace(which, all), current != nullptr ? placeOf(all, current->id) : -1, static_cast<int>(all.size()));
    const bool everySelected = which.getKind() == SelectType::Kind::selected;
    zones_.forEach([&](Zones::Zone& zone) {
        const bool addressed = everySelected
                                   ? zone.selected
                                   : std::find(places.begin(), places.end(), placeOf(all, zone.id)) != places.end();
        const int transpose =
            std::clamp(semitones.applyTo(zone.transpose), -largestTransposition, largestTransposition);
        if (addressed && transpose != zone.transpose) {
            zone.transpose = static_cast<std::int8_t>(transpose);
            engine_.postSetZone(zone);
        }
    });
}

} // namespace Backend
