// The door of the joysticks' section: what the polling thread and the window post here is done on the backend's thread.
#pragma once

#include "core/PresetMessageManager.h"
#include "input/JoystickListener.h"
#include "input/JoystickMap.h"
#include "input/JoystickXml.h"

#include <atomic>
#include <cstdint>

namespace Backend {
class QelIF;
}

namespace Backend::Joystick {

class JoystickSection;

class JoystickMessageManager final : public PresetMessageManager<JoystickMap, JoystickSelection>,
                                     public JoystickListener {
public:
    // All outlive the manager.
    JoystickMessageManager(JoystickSection& section, QelIF& qel, MessageManagerMaster& master);

    void handleMessage(const Platform::ThreadMessage& message) override;

    // What the joysticks do, on to the facade.
    void axisChanged(const JoyAxisElementId& axis, std::int32_t value) override;
    void buttonDown(const JoyButtonElementId& button, bool repeat) override;
    void buttonUp(const JoyButtonElementId& button) override;
    // From now on what the joysticks do is dropped instead of waited with, so that the backend may wait for the polling
    // thread. [backend]
    void close() noexcept { isClosed_ = true; }

    void postPut(JoystickMap elements);
    void postSet(JoystickMap map);

private:
    enum class Message : std::uint32_t;

    void postEvent(Message message, std::int32_t joystick, std::int32_t element, std::intptr_t lParam);

    JoystickSection& section_;
    QelIF& qel_;
    std::atomic<bool> isClosed_ = false;
};

} // namespace Backend::Joystick
