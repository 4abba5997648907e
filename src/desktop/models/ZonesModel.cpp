#include "desktop/models/ZonesModel.h"

#include "core/QelIF.h"
#include "desktop/models/Models.h"
#include "gui/GuiMessages.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <algorithm>

namespace Desktop {

using Backend::Zones::Zone;
using Backend::Zones::ZoneMap;

ZonesModel::ZonesModel(Models& models) : models_(models) {
    on(idOf(Gui::GuiMessage::zones), [this](std::uintptr_t, std::intptr_t copy) {
        zones_ = *Backend::takeCopy<ZoneMap>(copy);
        emit changed();
    });
}

int ZonesModel::transposeOf(int zone) const {
    const Zone* const found = zones_.find(static_cast<std::int8_t>(zone));
    return found != nullptr ? found->transpose : 0;
}

void ZonesModel::select(int zone) {
    models_.ask([zone](Backend::QelIF& qel) { qel.selectZone(SelectType::fixed(zone)); });
}

void ZonesModel::edit(const QString& text, ZoneMap after, int key) {
    models_.edits.edit<ZoneMap>(
        text, zones_, after,
        [this](const ZoneMap& zones) {
            zones_ = zones;
            models_.ask([zones](Backend::QelIF& qel) { qel.setZones(zones); });
            emit changed();
        },
        key);
}

// One transposition goes its own way: the notes that the zone holds end where they began.
void ZonesModel::transpose(int zone, int semitones) {
    const int limited = std::clamp(semitones, -127, 127);
    models_.edits.edit<int>(
        tr("transpose zone %1").arg(zone + 1), transposeOf(zone), limited,
        [this, zone](const int& value) {
            if (Zone* const found = zones_.find(static_cast<std::int8_t>(zone))) {
                found->transpose = static_cast<std::int8_t>(value);
            }
            models_.ask([zone, value](Backend::QelIF& qel) {
                qel.changeZoneTranspose(SelectType::fixed(zone), RelativeFixedValue::fixed(value));
            });
            emit changed();
        },
        models_.edits.keyFor(2000 + zone));
}

void ZonesModel::add() {
    ZoneMap after = zones_;
    for (int id = 0; id < 128; ++id) {
        if (after.find(static_cast<std::int8_t>(id)) == nullptr) {
            Zone zone;
            zone.id = static_cast<std::int8_t>(id);
            zone.selected = after.isEmpty();
            after.set(zone);
            break;
        }
    }
    edit(tr("add a zone"), after);
}

void ZonesModel::renumber(int zone, int number) {
    const Zone* const found = zones_.find(static_cast<std::int8_t>(zone));
    if (found == nullptr || number < 0 || number > 127 || zones_.find(static_cast<std::int8_t>(number)) != nullptr) {
        emit changed(); // what the user set is not so
        return;
    }
    ZoneMap after;
    zones_.forEach([&](Zone each) {
        each.id = static_cast<std::int8_t>(each.id == zone ? number : each.id);
        after.set(each);
    });
    edit(tr("number zone %1").arg(zone + 1), after);
}

void ZonesModel::remove(int zone) {
    ZoneMap after;
    zones_.forEach([&](const Zone& each) {
        if (each.id != zone) {
            after.set(each);
        }
    });
    if (after.selected() == nullptr) {
        after.selectLowest();
    }
    edit(tr("remove zone %1").arg(zone + 1), after);
}

} // namespace Desktop
