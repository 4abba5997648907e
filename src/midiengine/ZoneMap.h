// The zones of a program by their ids.
#pragma once

#include "midiengine/Zone.h"

#include <array>
#include <cstdint>
#include <optional>

namespace Backend::Zones {

// Room for each id there can be, so that the engine finds a zone at once and copying never allocates.
class ZoneMap final {
public:
    // Null when there is no such zone, also for negative ids.
    [[nodiscard]] const Zone* find(std::int8_t id) const;
    [[nodiscard]] Zone* find(std::int8_t id);
    // Adds a zone or replaces the one with its id, which is in 0..127.
    void set(const Zone& zone);
    void clear();
    [[nodiscard]] bool isEmpty() const { return size_ == 0; }
    [[nodiscard]] int size() const { return size_; }

    // Marks the zone with the lowest id as the only selected one.
    void selectLowest();
    // The zone with the lowest id that is selected; null when none is.
    [[nodiscard]] const Zone* selected() const;

    // Calls visit(zone) for each zone, ids rising.
    template <typename Visit> void forEach(Visit visit) const {
        for (const std::optional<Zone>& zone : zones_) {
            if (zone) {
                visit(*zone);
            }
        }
    }
    template <typename Visit> void forEach(Visit visit) {
        for (std::optional<Zone>& zone : zones_) {
            if (zone) {
                visit(*zone);
            }
        }
    }

    bool operator==(const ZoneMap&) const = default;

private:
    std::array<std::optional<Zone>, 128> zones_{};
    int size_ = 0;
};

} // namespace Backend::Zones
