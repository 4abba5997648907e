#include "input/JoystickMessageManager.h"

#include "core/QelIF.h"
#include "input/JoystickSection.h"
#include "platform/Threads.h"

#include <cassert>
#include <utility>

namespace Backend::Joystick {

enum class JoystickMessageManager::Message : std::uint32_t {
    put = Platform::applicationMessage + 1701,
    set,
    storePreset,
    deletePreset,
    savePreset,
    axisChanged,
    buttonDown,
    buttonUp
};

namespace {

constexpr int elementBits = 16;

} // namespace

JoystickMessageManager::JoystickMessageManager(JoystickSection& section, QelIF& qel, MessageManagerMaster& master)
    : PresetMessageManager(master, Message::put, Message::buttonUp, Message::storePreset), section_(section),
      qel_(qel) {}

void JoystickMessageManager::handleMessage(const Platform::ThreadMessage& message) {
    assert(currentThreadIsManagerThread());
    if (handlePreset(section_, message)) {
        return;
    }
    const std::uintptr_t w = message.wParam;
    const auto joystick = static_cast<std::int32_t>(w >> elementBits);
    const auto element = static_cast<std::int32_t>(w & 0xFFFF);
    switch (static_cast<Message>(message.id)) {
    case Message::put:
        return section_.put(*takeCopy<JoystickMap>(w));
    case Message::set:
        return section_.set(std::move(*takeCopy<JoystickMap>(w)));
    case Message::axisChanged:
        return qel_.joystickAxisChanged({joystick, element}, static_cast<int>(message.lParam));
    case Message::buttonDown:
        return qel_.joystickButtonDown({joystick, element}, message.lParam != 0);
    case Message::buttonUp:
        return qel_.joystickButtonUp({joystick, element});
    case Message::storePreset:
    case Message::deletePreset:
    case Message::savePreset:
        return; // done above
    }
}

void JoystickMessageManager::postEvent(Message message, std::int32_t joystick, std::int32_t element,
                                       std::intptr_t lParam) {
    const std::uintptr_t wParam = static_cast<std::uintptr_t>(joystick) << elementBits | static_cast<unsigned>(element);
    while (!tryPost(message, wParam, lParam) && !isClosed_) {
        Platform::sleepMilliseconds(Platform::postRetryMilliseconds);
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

void JoystickMessageManager::postPut(JoystickMap elements) {
    postValue(Message::put, std::move(elements));
}

void JoystickMessageManager::postSet(JoystickMap map) {
    postValue(Message::set, std::move(map));
}

} // namespace Backend::Joystick
