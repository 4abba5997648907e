// The door of the oscillators' section: what is posted here is done on the backend's thread.
#pragma once

#include "core/MessageManager.h"
#include "generators/OscList.h"
#include "values/OnOffToggle.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Backend {
class OscillatorSection;
}

namespace Backend::Oscillators {

// Posts come back at once and try again every 10 ms until the queue takes them; their order is kept. For any thread but
// the backend's own.
class OscMessageManager final : public MessageManager {
public:
    // Both outlive the manager.
    OscMessageManager(OscillatorSection& section, MessageManagerMaster& master)
        : MessageManager(master), section_(section) {}

    [[nodiscard]] bool wantMessage(std::uint32_t id) const override;
    void handleMessage(const Platform::ThreadMessage& message) override;

    void postSet(OscList list);
    // Those with ids of the list replace what is there, others are appended.
    void postPut(std::vector<Oscillator> oscillators);
    void postChangePlaying(const SelectType& which, const OnOffToggle& how);
    void postChangeSpeed(const SelectType& which, const RelativeFixedValue& value);
    void postDataSelect(const SelectType& which);
    void postSelect(std::vector<OscId> ids); // from the window itself, which knows: it is not told

    void postLoadPreset(std::string name);
    void postStorePreset(std::string name, OscList list);
    void postDeletePreset(std::string name);
    // An empty list of ids saves all of them.
    void postSavePreset(std::string name, std::vector<OscId> ids);

    // Asks for the values of playing oscillators to be shown: one try. [clock]
    [[nodiscard]] bool tryPostShowValues() noexcept;

private:
    enum class Message : std::uint32_t;

    template <typename Value> void postValue(Message message, Value&& value);

    OscillatorSection& section_;
};

} // namespace Backend::Oscillators
