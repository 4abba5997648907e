// The door to the presets of the layers: what is posted here is done on the backend's thread.
#pragma once

#include "core/PresetMessageManager.h"
#include "midiengine/LayerList.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Backend {
class LayerSection;
}

namespace Backend::Layers {

// A selection is the places of layers.
class LayerMessageManager final : public PresetMessageManager<LayerList, std::vector<int>> {
public:
    // Both outlive the manager.
    LayerMessageManager(LayerSection& section, MessageManagerMaster& master);

    void handleMessage(const Platform::ThreadMessage& message) override;

    void postLoadPreset(std::string name);

private:
    enum class Message : std::uint32_t;

    LayerSection& section_;
};

} // namespace Backend::Layers
