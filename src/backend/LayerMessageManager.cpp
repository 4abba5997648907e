#include "backend/LayerMessageManager.h"

#include "backend/LayerSection.h"
#include "core/MessageManagerMaster.h"
#include "core/MessageParameters.h"

#include <cassert>
#include <utility>

namespace Backend::Layers {

enum class LayerMessageManager::Message : std::uint32_t {
    loadPreset = Platform::applicationMessage + 1951,
    storePreset,
    deletePreset,
    savePreset
};

namespace {

struct StoredPreset {
    std::string name;
    LayerList layers;
};
struct SavedPreset {
    std::string name;
    std::vector<int> places;
};

} // namespace

bool LayerMessageManager::wantMessage(std::uint32_t id) const {
    return id >= static_cast<std::uint32_t>(Message::loadPreset) &&
           id <= static_cast<std::uint32_t>(Message::savePreset);
}

void LayerMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    const std::uintptr_t w = message.wParam;
    switch (static_cast<Message>(message.id)) {
    case Message::loadPreset:
        return section_.loadPreset(*takeCopy<std::string>(w));
    case Message::storePreset: {
        const auto preset = takeCopy<StoredPreset>(w);
        return section_.storePreset(preset->name, preset->layers);
    }
    case Message::deletePreset:
        return section_.deletePreset(*takeCopy<std::string>(w));
    case Message::savePreset: {
        const auto preset = takeCopy<SavedPreset>(w);
        return section_.savePreset(preset->name, preset->places);
    }
    }
}

template <typename Value> void LayerMessageManager::postValue(Message message, Value&& value) {
    postCopy(std::forward<Value>(value),
             [&](std::uintptr_t copy) { return post(static_cast<std::uint32_t>(message), copy); });
}

void LayerMessageManager::postLoadPreset(std::string name) {
    postValue(Message::loadPreset, std::move(name));
}

void LayerMessageManager::postStorePreset(std::string name, LayerList layers) {
    postValue(Message::storePreset, StoredPreset{std::move(name), std::move(layers)});
}

void LayerMessageManager::postDeletePreset(std::string name) {
    postValue(Message::deletePreset, std::move(name));
}

void LayerMessageManager::postSavePreset(std::string name, std::vector<int> places) {
    postValue(Message::savePreset, SavedPreset{std::move(name), std::move(places)});
}

} // namespace Backend::Layers
