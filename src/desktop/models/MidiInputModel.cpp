#include "desktop/models/MidiInputModel.h"

#include "core/QelIF.h"
#include "desktop/models/MessageTexts.h"
#include "desktop/models/Models.h"
#include "midiinput/ConfigurationSection.h"
#include "midiinput/MidiInputMessageManager.h"

#include <utility>

namespace Desktop {

using namespace Backend::MidiInput;

MidiInputModel::MidiInputModel(Models& models) : models_(models) {
    if (const auto map = models.qel().getMidiInputMap()) {
        map_ = *map;
    }
    onCopy<MidiEventConfigurationMap>(midiInputLoadedMessage, [this](MidiEventConfigurationMap map) {
        map_ = std::move(map);
        emit changed();
    });
    onCopy<std::vector<MidiEventConfiguration>>(
        midiEventsPutMessage, [this](const std::vector<MidiEventConfiguration>& list) {
            bool differs = false;
            for (const MidiEventConfiguration& each : list) {
                const MidiEventConfiguration* const known = map_.find(each.event);
                if (!isOutdated(each.event) && (known == nullptr || !(*known == each))) {
                    map_.store(each.event, each);
                    differs = true;
                }
            }
            if (differs) {
                emit changed();
            }
        });
    onCopy<std::vector<MidiEvent>>(midiEventsRemovedMessage, [this](const std::vector<MidiEvent>& list) {
        bool differs = false;
        for (const MidiEvent& each : list) {
            differs = (!isOutdated(each) && map_.remove(each)) || differs;
        }
        if (differs) {
            emit changed();
        }
    });
}

bool MidiInputModel::isOutdated(const MidiEvent& event) {
    const auto found = posted_.find(event.getPacked());
    if (found == posted_.end()) {
        return false;
    }
    if (--found->second > 0) {
        return true;
    }
    posted_.erase(found);
    return false;
}

QString MidiInputModel::textOf(const MidiEvent& event) const {
    QString text = kindText(event.message);
    if (event.input != MidiEvent::ANY) {
        text += ", " + models_.ports.inputName(event.input);
    }
    return event.channel == MidiEvent::ANY ? text : text + ", " + tr("channel %1").arg(event.channel + 1);
}

MidiInputModel::State MidiInputModel::stateOf(const MidiEvent& event) const {
    const MidiEventConfiguration* const found = map_.find(event);
    return {event, found != nullptr ? std::optional(*found) : std::nullopt};
}

void MidiInputModel::put(const QString& text, const MidiEventConfiguration& configuration, bool isGesture) {
    constexpr int kind = 4000;
    edit(text, {{configuration.event, configuration}}, isGesture ? models_.edits.keyFor(kind) : 0);
}

void MidiInputModel::remove(const MidiEvent& event) {
    edit(tr("remove an incoming message"), {{event, std::nullopt}});
}

bool MidiInputModel::move(const MidiEvent& from, const MidiEvent& to) {
    const MidiEventConfiguration* const found = map_.find(from);
    if (found == nullptr || map_.find(to) != nullptr) {
        return false;
    }
    MidiEventConfiguration moved = *found;
    moved.event = to;
    edit(tr("change an incoming message"), {{from, std::nullopt}, {to, std::move(moved)}});
    return true;
}

void MidiInputModel::loadPreset(const std::string& name) {
    models_.edits.perform(
        tr("load the MIDI input preset %1").arg(QString::fromStdString(name)),
        [this, name] { models_.ask([name](Backend::QelIF& qel) { qel.loadMidiInputPreset(name); }); },
        [this, before = map_] {
            States states;
            for (const auto& [event, configuration] : map_) {
                if (before.find(event) == nullptr) {
                    states.push_back({event, std::nullopt});
                }
            }
            for (const auto& [event, configuration] : before) {
                states.push_back({event, configuration});
            }
            set(states);
        });
}

void MidiInputModel::edit(const QString& text, States after, int key) {
    States before;
    for (const State& each : after) {
        before.push_back(stateOf(each.event));
    }
    models_.edits.edit<States>(
        text, std::move(before), std::move(after), [this](const States& states) { set(states); }, key);
}

void MidiInputModel::set(const States& states) {
    std::vector<MidiEventConfiguration> stored;
    std::vector<MidiEvent> removed;
    for (const State& each : states) {
        ++posted_[each.event.getPacked()];
        if (each.configuration) {
            map_.store(each.event, *each.configuration);
            stored.push_back(*each.configuration);
        } else {
            map_.remove(each.event);
            removed.push_back(each.event);
        }
    }
    MidiInputMessageManager& backend = models_.qel().getMidiInputMessageManager();
    if (!removed.empty()) {
        backend.postRemove(std::move(removed));
    }
    if (!stored.empty()) {
        backend.postPut(std::move(stored));
    }
    emit changed();
}

} // namespace Desktop
