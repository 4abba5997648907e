// The zones of the current program and what functions do to them.
#pragma once

#include "midiengine/MidiEngineMessageManager.h"
#include "midiengine/ZoneMap.h"
#include "platform/XmlDocument.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <iosfwd>

namespace Backend {

// Owns the master map; the engine gets copies. "up" and "down" go from the selected zone with the lowest id to the
// next higher and lower id there is, and on from the ends to the other end. [backend]
class ZoneSection final {
public:
    // `engine` outlives the section.
    explicit ZoneSection(MidiEngine::MidiEngineMessageManager& engine) : engine_(engine) {}

    [[nodiscard]] const Zones::ZoneMap& zones() const { return zones_; }
    void set(const Zones::ZoneMap& zones);

    // Whole sections. There are no presets of zones: "000 - Default" and any other name stand for no zones.

    void setDefault() { set({}); }
    void read(const Platform::XmlElement& section);
    void write(std::ostream& out, int depth, bool allowReference) const;

    // "all" selects every zone; any other selection leaves one selected. Costs held notes nothing.
    void select(const SelectType& which);
    // A relative value is added, a fixed one set, within -127..127. Held notes end where they began.
    void changeTranspose(const SelectType& which, const RelativeFixedValue& semitones);

private:
    [[nodiscard]] std::vector<std::int8_t> ids() const;

    MidiEngine::MidiEngineMessageManager& engine_;
    Zones::ZoneMap zones_;
};

} // namespace Backend
