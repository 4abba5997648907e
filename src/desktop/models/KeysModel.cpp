#include "desktop/models/KeysModel.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/models/ActionTexts.h"
#include "desktop/models/Models.h"
#include "input/ComputerInputMessageManager.h"
#include "input/ComputerInputMessages.h"

#include <QStringList>

namespace Desktop {

using namespace Backend::ComputerInput;

KeysModel::KeysModel(Models& models) : models_(models) {
    onCopy<KeyConfigurationMap>(keysMessage, [this](KeyConfigurationMap map) {
        if (!underway_.isOutdated({map})) {
            map_ = std::move(map);
            emit changed();
        }
    });
    onCopy<std::vector<KeyConfiguration>>(keysPutMessage, [this](const std::vector<KeyConfiguration>& list) {
        for (const KeyConfiguration& configuration : list) {
            map_.store(configuration.key, configuration);
        }
        emit changed();
    });
}

bool KeysModel::isMapped(const Key& key) const {
    const KeyConfiguration* const found = find(key);
    return found != nullptr && found->activePart().has_value();
}

bool KeysModel::isGlobal(const Key& key) const {
    return isMapped(key) && find(key)->global;
}

QString KeysModel::shortText(const Key& key) const {
    if (const KeyConfiguration* const found = find(key)) {
        for (const FunctionEntry& entry : found->entries) {
            if (const auto& function = entry.down ? entry.down : entry.up) {
                return shortTextOf(*function);
            }
        }
    }
    return {};
}

QString KeysModel::longText(const Key& key) const {
    QStringList parts;
    if (const KeyConfiguration* const found = find(key)) {
        for (const FunctionEntry& entry : found->entries) {
            if (entry.down) {
                parts << tr("down: %1").arg(longTextOf(*entry.down));
            }
            if (entry.up) {
                parts << tr("up: %1").arg(longTextOf(*entry.up));
            }
        }
    }
    return parts.join("   ");
}

std::optional<KeysModel::KeyNote> KeysModel::noteOf(const Key& key) const {
    if (const KeyConfiguration* const found = find(key)) {
        for (const FunctionEntry& entry : found->entries) {
            if (const auto event = entry.down ? entry.down->getMidiEvent() : Backend::MidiEventIdentity{};
                event.isNoteOn()) {
                return KeyNote{event.number, event.zone == 255 ? -1 : int{event.zone}};
            }
        }
    }
    return std::nullopt;
}

void KeysModel::apply(const KeyConfigurationMap& map) {
    map_ = map;
    underway_.posted({map});
    models_.qel().getComputerInputMessageManager().postSet(map);
    emit changed();
}

void KeysModel::edit(const QString& text, KeyConfigurationMap after, int key) {
    models_.edits.edit<Snapshot>(
        text, {map_}, {std::move(after)}, [this](const Snapshot& snapshot) { apply(snapshot.map); }, key);
}

void KeysModel::put(const QString& text, const std::vector<KeyConfiguration>& configurations, bool isGesture) {
    constexpr int kind = 5000;
    KeyConfigurationMap after = map_;
    for (const KeyConfiguration& configuration : configurations) {
        after.store(configuration.key, configuration);
    }
    edit(text, std::move(after), isGesture ? models_.edits.keyFor(kind) : 0);
}

void KeysModel::clear(const Key& key) {
    KeyConfigurationMap after = map_;
    after.remove(key);
    edit(tr("clear the key %1").arg(QString::fromStdString(key.getName())), std::move(after));
}

void KeysModel::setUseKeyUpMod(bool on) {
    KeyConfigurationMap after = map_;
    after.useKeyUpMod = on;
    edit(tr("modifiers at release"), std::move(after));
}

void KeysModel::press(const Key& key, bool repeat) {
    models_.backend().postKeyDown(key, repeat);
    if (!repeat && down_.insert(key.getCode()).second) {
        emit keyMoved(key.getCode(), true);
    }
}

void KeysModel::release(const Key& key) {
    models_.backend().postKeyUp(key);
    if (down_.erase(key.getCode()) > 0) {
        emit keyMoved(key.getCode(), false);
    }
}

void KeysModel::loadPreset(const std::string& name) {
    models_.edits.perform(
        tr("load the key preset %1").arg(QString::fromStdString(name)),
        [this, name] { models_.ask([name](Backend::QelIF& qel) { qel.loadComputerInputPreset(name); }); },
        [this, before = map_] { apply(before); });
}

} // namespace Desktop
