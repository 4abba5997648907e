// The door of the oscillators' section: what is posted here is done on the backend's thread.
#pragma once

#include "core/PresetMessageManager.h"
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

class OscMessageManager final : public PresetMessageManager<OscList, std::vector<OscId>> {
public:
    // Both outlive the manager.
    OscMessageManager(OscillatorSection& section, MessageManagerMaster& master);

    void handleMessage(const Platform::ThreadMessage& message) override;

    void postSet(OscList list);
    // Those with ids of the list replace what is there, others are appended.
    void postPut(std::vector<Oscillator> oscillators);
    void postChangePlaying(const SelectType& which, const OnOffToggle& how);
    void postChangeSpeed(const SelectType& which, const RelativeFixedValue& value);
    void postDataSelect(const SelectType& which);
    void postSelect(std::vector<OscId> ids); // from the window itself, which knows: it is not told

    void postLoadPreset(std::string name);

    // Asks for the values of playing oscillators to be shown: one try. [clock]
    [[nodiscard]] bool tryPostShowValues() noexcept;

private:
    enum class Message : std::uint32_t;

    OscillatorSection& section_;
};

} // namespace Backend::Oscillators
