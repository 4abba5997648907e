#include "midiengine/ZoneXml.h"

#include "values/AttributeReading.h"

#include <cstdint>

namespace Backend::Zones {

const ElementFormat& zonesFormat() {
    static const ElementFormat format = [] {
        ElementFormat zone;
        zone.name = "Zone";
        zone.meaning = "One region of the keys with its own transposition.";
        zone.attributes = {
            AttributeFormat::integerOf("id", "-1", 0, 127, "The number by which keys and functions name the zone."),
            AttributeFormat::integerOf("transpose", "0", -127, 127, "Semitones added to each note of the zone."),
        };
        zone.attributes.back().clamped = true;
        zone.id = {"id"};
        ElementFormat section;
        section.name = "Zones";
        section.meaning = "The zones of the computer keyboard, the screen and the joysticks.";
        section.attributes = {
            AttributeFormat::booleanOf("merge", false, "The zones are added to those that are there."),
            AttributeFormat::of(AttributeKind::text, "preset", "", "The preset that the section stands for."),
        };
        section.children = {zone};
        return section;
    }();
    return format;
}

void readZones(const Platform::XmlElement& section, ZoneMap& zones) {
    static const ElementFormat& format = zonesFormat().child("Zone");
    if (!readBoolean(section, zonesFormat()["merge"])) {
        zones.clear();
    }
    for (const Platform::XmlElement& child : section.children) {
        const std::int32_t id = child.name == "Zone" ? readInteger(child, format["id"]) : -1;
        if (id < 0 || id > 127) {
            continue;
        }
        const Zone* known = zones.find(static_cast<std::int8_t>(id));
        Zone zone = known != nullptr ? *known : Zone{};
        zone.id = static_cast<std::int8_t>(id);
        zone.transpose = static_cast<std::int8_t>(readInteger(child, format["transpose"]));
        zones.set(zone);
    }
    zones.selectLowest();
}

void writeZones(XmlWriter& xml, const ZoneMap& zones) {
    xml.begin("Zones").attribute("merge", false).content();
    zones.forEach([&xml](const Zone& zone) {
        xml.begin("Zone")
            .attribute("id", std::int32_t{zone.id})
            .attribute("transpose", std::int32_t{zone.transpose})
            .end();
    });
    xml.end();
}

} // namespace Backend::Zones
