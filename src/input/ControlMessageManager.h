// The door of the controls' section: what is posted here is done on the backend's thread.
#pragma once

#include "core/PresetMessageManager.h"
#include "input/ControlMap.h"

#include <cstdint>
#include <vector>

namespace Backend {
class QelIF;
}

namespace Backend::Controls {

class ControlSection;

class ControlMessageManager final : public PresetMessageManager<ControlMap, std::vector<Cell>> {
public:
    // All outlive the manager.
    ControlMessageManager(ControlSection& section, QelIF& qel, MessageManagerMaster& master);

    void handleMessage(const Platform::ThreadMessage& message) override;

    // The window, when there is one, is sent the list too (controlsPutMessage).
    void postPut(std::vector<Control> controls);
    void postSet(ControlMap map);
    // A cell too far out to be packed holds no control. This from the window itself, which knows: it is not told.
    void postSetValue(const Cell& cell, std::int32_t value);
    // From elsewhere.
    void postMove(const Cell& cell, std::int32_t value);
    void postRelease(const Cell& cell);
    void postSendAll();
    void postSelect(std::vector<Cell> cells);

    // Asks for what has passed the engine to be taken in: one try. [clock]
    [[nodiscard]] bool tryPostTakeIn() noexcept;

private:
    enum class Message : std::uint32_t;

    void postCell(Message message, const Cell& cell, std::int32_t value);
    void put(const std::vector<Control>& controls);

    ControlSection& section_;
    QelIF& qel_;
};

} // namespace Backend::Controls
