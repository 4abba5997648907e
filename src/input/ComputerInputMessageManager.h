// The door of the computer keyboard's section: what is posted here is done on the backend's thread.
#pragma once

#include "core/MessageManager.h"
#include "input/KeyConfigurationMap.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Backend::ComputerInput {

class ComputerInputSection;

// Posts come back at once and try again every 10 ms until the queue takes them; their order is kept. For any thread
// but the backend's own.
class ComputerInputMessageManager final : public MessageManager {
public:
    // All outlive the manager.
    ComputerInputMessageManager(ComputerInputSection& section, QelIF& qel, MessageManagerMaster& master)
        : MessageManager(master), section_(section), qel_(qel) {}

    [[nodiscard]] bool wantMessage(std::uint32_t id) const override;
    void handleMessage(const Platform::ThreadMessage& message) override;

    // Only the low 8 bits of a key's code travel; a key without a code or with an unknown one is not posted.
    void postKeyDown(const Key& key, bool repeat);
    void postKeyUp(const Key& key);

    // The window, when there is one, is sent the list too under the same number, as a heap copy that belongs to it,
    // and is told that the section has changed.
    void postPut(std::vector<KeyConfiguration> configurations);
    void postSetUseKeyUpMod(bool on);
    void postSet(KeyConfigurationMap map);
    void postStorePreset(std::string name, KeyConfigurationMap map);
    void postDeletePreset(std::string name);
    // An empty list of keys saves all of them.
    void postSavePreset(std::string name, std::vector<Key> keys);

private:
    enum class Message : std::uint32_t;

    bool post(Message message, std::uintptr_t wParam, std::intptr_t lParam = 0);
    template <typename Value> void postValue(Message message, Value&& value);
    void put(const std::vector<KeyConfiguration>& configurations);

    ComputerInputSection& section_;
    QelIF& qel_;
};

} // namespace Backend::ComputerInput
