#include "backend/LayerMessageManager.h"

#include "backend/LayerSection.h"

#include <cassert>
#include <utility>

namespace Backend::Layers {

enum class LayerMessageManager::Message : std::uint32_t {
    loadPreset = Platform::applicationMessage + 1951,
    storePreset,
    deletePreset,
    savePreset
};

LayerMessageManager::LayerMessageManager(LayerSection& section, MessageManagerMaster& master)
    : PresetMessageManager(master, Message::loadPreset, Message::savePreset, Message::storePreset), section_(section) {}

void LayerMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    if (!handlePreset(section_, message) && static_cast<Message>(message.id) == Message::loadPreset) {
        section_.loadPreset(*takeCopy<std::string>(message.wParam));
    }
}

void LayerMessageManager::postLoadPreset(std::string name) {
    postValue(Message::loadPreset, std::move(name));
}

} // namespace Backend::Layers
