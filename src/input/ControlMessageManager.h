// The door of the controls' section: what is posted here is done on the backend's thread.
#pragma once

#include "core/MessageManager.h"
#include "input/ControlMap.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Backend {
class QelIF;
}

namespace Backend::Controls {

class ControlSection;

// Posts come back at once and try again every 10 ms until the queue takes them; their order is kept. For any thread
// but the backend's own.
class ControlMessageManager final : public MessageManager {
public:
    // All outlive the manager.
    ControlMessageManager(ControlSection& section, QelIF& qel, MessageManagerMaster& master)
        : MessageManager(master), section_(section), qel_(qel) {}

    [[nodiscard]] bool wantMessage(std::uint32_t id) const override;
    void handleMessage(const Platform::ThreadMessage& message) override;

    // The window, when there is one, is sent the list too (controlsPutMessage).
    void postPut(std::vector<Control> controls);
    void postSet(ControlMap map);
    void postStorePreset(std::string name, ControlMap map);
    void postDeletePreset(std::string name);
    // An empty list of cells saves all of them.
    void postSavePreset(std::string name, std::vector<Cell> cells);
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

    bool post(Message message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0);
    void postCell(Message message, const Cell& cell, std::int32_t value);
    template <typename Value> void postValue(Message message, Value&& value);
    void put(const std::vector<Control>& controls);

    ControlSection& section_;
    QelIF& qel_;
};

} // namespace Backend::Controls
