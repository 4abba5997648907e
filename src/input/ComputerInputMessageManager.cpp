#include "input/ComputerInputMessageManager.h"

#include "core/QelIF.h"
#include "input/ComputerInputSection.h"

#include <cassert>
#include <utility>

namespace Backend::ComputerInput {

// Their numbers are fixed; the window is sent some of them too.
enum class ComputerInputMessageManager::Message : std::uint32_t {
    put = Platform::applicationMessage + 701,
    setUseKeyUpMod,
    set,
    storePreset,
    deletePreset,
    savePreset,
    keyDown,
    keyUp
};

ComputerInputMessageManager::ComputerInputMessageManager(ComputerInputSection& section, QelIF& qel,
                                                         MessageManagerMaster& master)
    : PresetMessageManager(master, Message::put, Message::keyUp, Message::storePreset), section_(section), qel_(qel) {}

void ComputerInputMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    if (handlePreset(section_, message)) {
        return;
    }
    const std::uintptr_t w = message.wParam;
    switch (static_cast<Message>(message.id)) {
    case Message::put:
        return put(*takeCopy<std::vector<KeyConfiguration>>(w));
    case Message::setUseKeyUpMod:
        return section_.setUseKeyUpMod(w != 0);
    case Message::set:
        return section_.set(std::move(*takeCopy<KeyConfigurationMap>(w)));
    case Message::keyDown:
        return section_.keyDown(Key::fromPacked(static_cast<std::uint32_t>(w)), message.lParam != 0);
    case Message::keyUp:
        return section_.keyUp(Key::fromPacked(static_cast<std::uint32_t>(w)));
    case Message::storePreset:
    case Message::deletePreset:
    case Message::savePreset:
        return; // done above
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

void ComputerInputMessageManager::postKeyDown(const Key& key, bool repeat) {
    if (key.canBePressed()) {
        post(Message::keyDown, key.getPacked(), asLParam(repeat));
    }
}

void ComputerInputMessageManager::postKeyUp(const Key& key) {
    if (key.canBePressed()) {
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

} // namespace Backend::ComputerInput
