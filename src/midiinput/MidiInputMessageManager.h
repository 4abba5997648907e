// The door of the MIDI input configurations: what the window posts here is done on the backend's thread.
#pragma once

#include "core/PresetMessageManager.h"
#include "midiinput/MidiEventConfigurationMap.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Backend::MidiInput {

class ConfigurationSection;

class MidiInputMessageManager final : public PresetMessageManager<MidiEventConfigurationMap, std::vector<MidiEvent>> {
public:
    // Both outlive the manager.
    MidiInputMessageManager(ConfigurationSection& section, MessageManagerMaster& master);

    void handleMessage(const Platform::ThreadMessage& message) override;

    void postPut(std::vector<MidiEventConfiguration> configurations);
    void postRemove(std::vector<MidiEvent> events);
    void postLoadPreset(std::string name);

private:
    enum class Message : std::uint32_t;

    ConfigurationSection& section_;
};

} // namespace Backend::MidiInput
