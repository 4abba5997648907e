#include "midiinput/MidiInputMessageManager.h"

#include "core/MessageParameters.h"
#include "midiinput/ConfigurationSection.h"

#include <cassert>
#include <utility>

namespace Backend::MidiInput {

// Their numbers are fixed; the window is sent some of them too.
enum class MidiInputMessageManager::Message : std::uint32_t {
    put = midiEventsPutMessage,
    loadPreset,
    storePreset,
    deletePreset,
    savePreset
};

namespace {

struct StoredPreset {
    std::string name;
    MidiEventConfigurationMap map;
};

struct SavedPreset {
    std::string name;
    std::vector<MidiEvent> events;
};

} // namespace

bool MidiInputMessageManager::wantMessage(std::uint32_t id) const {
    return id >= static_cast<std::uint32_t>(Message::put) && id <= static_cast<std::uint32_t>(Message::savePreset);
}

void MidiInputMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    const std::uintptr_t w = message.wParam;
    switch (static_cast<Message>(message.id)) {
    case Message::put:
        return section_.put(*takeCopy<std::vector<MidiEventConfiguration>>(w));
    case Message::loadPreset:
        return section_.loadPreset(*takeCopy<std::string>(w));
    case Message::storePreset: {
        const auto preset = takeCopy<StoredPreset>(w);
        return section_.storePreset(preset->name, preset->map);
    }
    case Message::deletePreset:
        return section_.deletePreset(*takeCopy<std::string>(w));
    case Message::savePreset: {
        const auto preset = takeCopy<SavedPreset>(w);
        return section_.savePreset(preset->name, preset->events);
    }
    }
}

template <typename Value> void MidiInputMessageManager::postValue(Message message, Value&& value) {
    postCopy(std::forward<Value>(value),
             [&](std::uintptr_t copy) { return post(static_cast<std::uint32_t>(message), copy); });
}

void MidiInputMessageManager::postPut(std::vector<MidiEventConfiguration> configurations) {
    postValue(Message::put, std::move(configurations));
}

void MidiInputMessageManager::postLoadPreset(std::string name) {
    postValue(Message::loadPreset, std::move(name));
}

void MidiInputMessageManager::postStorePreset(std::string name, MidiEventConfigurationMap map) {
    postValue(Message::storePreset, StoredPreset{std::move(name), std::move(map)});
}

void MidiInputMessageManager::postDeletePreset(std::string name) {
    postValue(Message::deletePreset, std::move(name));
}

void MidiInputMessageManager::postSavePreset(std::string name, std::vector<MidiEvent> events) {
    postValue(Message::savePreset, SavedPreset{std::move(name), std::move(events)});
}

} // namespace Backend::MidiInput
