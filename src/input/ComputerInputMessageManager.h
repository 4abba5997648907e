// The door of the computer keyboard's section: what is posted here is done on the backend's thread.
#pragma once

#include "core/PresetMessageManager.h"
#include "input/KeyConfigurationMap.h"

#include <cstdint>
#include <vector>

namespace Backend::ComputerInput {

class ComputerInputSection;

class ComputerInputMessageManager final : public PresetMessageManager<KeyConfigurationMap, std::vector<Key>> {
public:
    // All outlive the manager.
    ComputerInputMessageManager(ComputerInputSection& section, QelIF& qel, MessageManagerMaster& master);

    void handleMessage(const Platform::ThreadMessage& message) override;

    // Only the low 8 bits of a key's code travel; a key without a code or with an unknown one is not posted.
    void postKeyDown(const Key& key, bool repeat);
    void postKeyUp(const Key& key);

    // The window, when there is one, is sent the list too under the same number, as a heap copy that belongs to it,
    // and is told that the section has changed.
    void postPut(std::vector<KeyConfiguration> configurations);
    void postSetUseKeyUpMod(bool on);
    void postSet(KeyConfigurationMap map);

private:
    enum class Message : std::uint32_t;

    void put(const std::vector<KeyConfiguration>& configurations);

    ComputerInputSection& section_;
    QelIF& qel_;
};

} // namespace Backend::ComputerInput
