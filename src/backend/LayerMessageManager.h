// The door to the presets of the layers: what is posted here is done on the backend's thread.
#pragma once

#include "core/MessageManager.h"
#include "midiengine/LayerList.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Backend {
class LayerSection;
}

namespace Backend::Layers {

// Posts come back at once and try again every 10 ms until the queue takes them; their order is kept. For any thread but
// the backend's own.
class LayerMessageManager final : public MessageManager {
public:
    // Both outlive the manager.
    LayerMessageManager(LayerSection& section, MessageManagerMaster& master)
        : MessageManager(master), section_(section) {}

    [[nodiscard]] bool wantMessage(std::uint32_t id) const override;
    void handleMessage(const Platform::ThreadMessage& message) override;

    void postLoadPreset(std::string name);
    void postStorePreset(std::string name, LayerList layers);
    void postDeletePreset(std::string name);
    // An empty list of places saves all of them.
    void postSavePreset(std::string name, std::vector<int> places);

private:
    enum class Message : std::uint32_t;

    template <typename Value> void postValue(Message message, Value&& value);

    LayerSection& section_;
};

} // namespace Backend::Layers
