#include "input/JoystickMessageManager.h"

#include "core/MessageManagerMaster.h"
#include "core/MessageParameters.h"
#include "core/QelIF.h"
#include "input/JoystickSection.h"
#include "platform/Threads.h"

#include <cassert>
#include <utility>

namespace Backend::Joystick {

enum class JoystickMessageManager::Message : std::uint32_t {
    put = 34469,
    set,
    storePreset,
    deletePreset,
    savePreset,
    axisChanged,
    buttonDown,
    buttonUp
};

namespace {

struct StoredPreset {
    std::string name;
    JoystickMap map;
};

struct SavedPreset {
    std::string name;
    JoystickSelection selection;
};

constexpr unsigned retryMilliseconds = 10;
constexpr int elementBits = 16;

} // namespace

bool JoystickMessageManager::wantMessage(std::uint32_t id) const {
    return id >= static_cast<std::uint32_t>(Message::put) && id <= static_cast<std::uint32_t>(Message::buttonUp);
}

void JoystickMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    const std::uintptr_t w = message.wParam;
    const auto joystick = static_cast<std::int32_t>(w >> elementBits);
    const auto element = static_cast<std::int32_t>(w & 0xFFFF);
    switch (static_cast<Message>(message.id)) {
    case Message::put:
        return section_.put(*takeCopy<JoystickMap>(w));
    case Message::set:
        return section_.set(std::move(*takeCopy<JoystickMap>(w)));
    case Message::storePreset: {
        const auto preset = takeCopy<StoredPreset>(w);
        return section_.storePreset(preset->name, preset->map);
    }
    case Message::deletePreset:
        return section_.deletePreset(*takeCopy<std::string>(w));
    case Message::savePreset: {
        const auto preset = takeCopy<SavedPreset>(w);
        return section_.savePreset(preset->name, preset->selection);
    }
    case Message::axisChanged:
        return qel_.joystickAxisChanged({joystick, element}, static_cast<int>(message.lParam));
    case Message::buttonDown:
        return qel_.joystickButtonDown({joystick, element}, message.lParam != 0);
    case Message::buttonUp:
        return qel_.joystickButtonUp({joystick, element});
    }
}

void JoystickMessageManager::postEvent(Message message, std::int32_t joystick, std::int32_t element,
                                       std::intptr_t lParam) {
    const std::uintptr_t wParam = static_cast<std::uintptr_t>(joystick) << elementBits | static_cast<unsigned>(element);
    while (!getMaster().tryPostMessage(static_cast<std::uint32_t>(message), wParam, lParam) && !isClosed_) {
        Platform::sleepMilliseconds(retryMilliseconds);
    }
}

void JoystickMessageManager::axisChanged(const JoyAxisElementId& axis, std::int32_t value) {
    postEvent(Message::axisChanged, axis.joystick, axis.axis, value);
}

void JoystickMessageManager::buttonDown(const JoyButtonElementId& button, bool repeat) {
    postEvent(Message::buttonDown, button.joystick, button.button, asLParam(repeat));
}

void JoystickMessageManager::buttonUp(const JoyButtonElementId& button) {
    postEvent(Message::buttonUp, button.joystick, button.button, 0);
}

template <typename Value> void JoystickMessageManager::postValue(Message message, Value&& value) {
    postCopy(std::forward<Value>(value),
             [&](std::uintptr_t copy) { return post(static_cast<std::uint32_t>(message), copy); });
}

void JoystickMessageManager::postPut(JoystickMap elements) {
    postValue(Message::put, std::move(elements));
}

void JoystickMessageManager::postSet(JoystickMap map) {
    postValue(Message::set, std::move(map));
}

void JoystickMessageManager::postStorePreset(std::string name, JoystickMap map) {
    postValue(Message::storePreset, StoredPreset{std::move(name), std::move(map)});
}

void JoystickMessageManager::postDeletePreset(std::string name) {
    postValue(Message::deletePreset, std::move(name));
}

void JoystickMessageManager::postSavePreset(std::string name, JoystickSelection selection) {
    postValue(Message::savePreset, SavedPreset{std::move(name), std::move(selection)});
}

} // namespace Backend::Joystick
