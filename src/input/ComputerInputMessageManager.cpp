#include "input/ComputerInputMessageManager.h"

#include "core/MessageParameters.h"
#include "core/QelIF.h"
#include "input/ComputerInputSection.h"

#include <cassert>
#include <utility>

namespace Backend::ComputerInput {

// Their numbers are fixed; the window is sent some of them too.
enum class ComputerInputMessageManager::Message : std::uint32_t {
    put = 33469,
    setUseKeyUpMod,
    set,
    storePreset,
    deletePreset,
    savePreset,
    keyDown,
    keyUp
};

namespace {

struct StoredPreset {
    std::string name;
    KeyConfigurationMap map;
};

struct SavedPreset {
    std::string name;
    std::vector<Key> keys;
};

// Packed, an unknown key would be the one without a code.
bool canBePosted(const Key& key) {
    return key.getCode() != Key::NO_CODE && key.getCode() != Key::UNKNOWN_CODE;
}

} // namespace

bool ComputerInputMessageManager::wantMessage(std::uint32_t id) const {
    return id >= static_cast<std::uint32_t>(Message::put) && id <= static_cast<std::uint32_t>(Message::keyUp);
}

void ComputerInputMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    const std::uintptr_t w = message.wParam;
    switch (static_cast<Message>(message.id)) {
    case Message::put:
        return put(*takeCopy<std::vector<KeyConfiguration>>(w));
    case Message::setUseKeyUpMod:
        return section_.setUseKeyUpMod(w != 0);
    case Message::set:
        return section_.set(std::move(*takeCopy<KeyConfigurationMap>(w)));
    case Message::storePreset: {
        const auto preset = takeCopy<StoredPreset>(w);
        return section_.storePreset(preset->name, preset->map);
    }
    case Message::deletePreset:
        return section_.deletePreset(*takeCopy<std::string>(w));
    case Message::savePreset: {
        const auto preset = takeCopy<SavedPreset>(w);
        return section_.savePreset(preset->name, preset->keys);
    }
    case Message::keyDown:
        return section_.keyDown(Key::fromPacked(static_cast<std::uint32_t>(w)), message.lParam != 0);
    case Message::keyUp:
        return section_.keyUp(Key::fromPacked(static_cast<std::uint32_t>(w)));
    }
}

void ComputerInputMessageManager::put(const std::vector<KeyConfiguration>& configurations) {
    section_.put(configurations);
    const Platform::WindowHandle window = qel_.getGuiWindowHandle();
    if (window == nullptr) {
        return;
    }
    const auto postToWindow = [&](Message id, std::uintptr_t wParam) {
        return Platform::postWindowMessage(window, {static_cast<std::uint32_t>(id), wParam, 0});
    };
    postCopy(configurations, [&](std::uintptr_t copy) { return postToWindow(Message::put, copy); });
    postToWindow(Message::set, 0);
}

bool ComputerInputMessageManager::post(Message message, std::uintptr_t wParam, std::intptr_t lParam) {
    return MessageManager::post(static_cast<std::uint32_t>(message), wParam, lParam);
}

template <typename Value> void ComputerInputMessageManager::postValue(Message message, Value&& value) {
    postCopy(std::forward<Value>(value), [&](std::uintptr_t copy) { return post(message, copy); });
}

void ComputerInputMessageManager::postKeyDown(const Key& key, bool repeat) {
    if (canBePosted(key)) {
        post(Message::keyDown, key.getPacked(), asLParam(repeat));
    }
}

void ComputerInputMessageManager::postKeyUp(const Key& key) {
    if (canBePosted(key)) {
        post(Message::keyUp, key.getPacked());
    }
}

void ComputerInputMessageManager::postPut(std::vector<KeyConfiguration> configurations) {
    postValue(Message::put, std::move(configurations));
}

void ComputerInputMessageManager::postSetUseKeyUpMod(bool on) {
    post(Message::setUseKeyUpMod, asWParam(on));
}

void ComputerInputMessageManager::postSet(KeyConfigurationMap map) {
    postValue(Message::set, std::move(map));
}

void ComputerInputMessageManager::postStorePreset(std::string name, KeyConfigurationMap map) {
    postValue(Message::storePreset, StoredPreset{std::move(name), std::move(map)});
}

void ComputerInputMessageManager::postDeletePreset(std::string name) {
    postValue(Message::deletePreset, std::move(name));
}

void ComputerInputMessageManager::postSavePreset(std::string name, std::vector<Key> keys) {
    postValue(Message::savePreset, SavedPreset{std::move(name), std::move(keys)});
}

} // namespace Backend::ComputerInput
