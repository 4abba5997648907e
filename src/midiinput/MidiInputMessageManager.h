// The door of the MIDI input configurations: what the window posts here is done on the backend's thread.
#pragma once

#include "core/MessageManager.h"
#include "midiinput/MidiEventConfigurationMap.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Backend::MidiInput {

class ConfigurationSection;

// Posts come back at once and try again every 10 ms until the queue takes them; their order is kept. For any thread
// but the backend's own.
class MidiInputMessageManager final : public MessageManager {
public:
    // Both outlive the manager.
    MidiInputMessageManager(ConfigurationSection& section, MessageManagerMaster& master)
        : MessageManager(master), section_(section) {}

    [[nodiscard]] bool wantMessage(std::uint32_t id) const override;
    void handleMessage(const Platform::ThreadMessage& message) override;

    void postPut(std::vector<MidiEventConfiguration> configurations);
    void postLoadPreset(std::string name);
    void postStorePreset(std::string name, MidiEventConfigurationMap map);
    void postDeletePreset(std::string name);
    // An empty list saves all.
    void postSavePreset(std::string name, std::vector<MidiEvent> events);

private:
    enum class Message : std::uint32_t;

    template <typename Value> void postValue(Message message, Value&& value);

    ConfigurationSection& section_;
};

} // namespace Backend::MidiInput
