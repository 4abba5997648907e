// The ports of a MIDI system in both directions, for who opens them and for who looks at them.
#pragma once

#include "host/live/PortArrangement.h"
#include "host/live/PortRoster.h"
#include "host/live/PortWishes.h"
#include "platform/Result.h"
#include "values/MidiPort.h"

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace Host {

// One thread, the opener, brings the lists up to date and opens and closes what is in them; others see and enable ports
// meanwhile. [opener] but where marked
class PortLists final {
public:
    // `wishes` outlive the lists. The others: PortArrangement.
    PortLists(const PortWishes& wishes, std::string system, std::string ownPort, bool opensDevices);

    // Fills the lists, which are empty. A fault for a wish that no port answers to.
    [[nodiscard]] Platform::Outcome arrange(const std::vector<std::string>& inputs,
                                            const std::vector<std::string>& outputs);
    // True when something changed.
    bool update(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs);

    // Opens or closes a port, or leaves it as it is; returns whether it is open now.
    using Settle = std::function<bool(int place, const std::string& name, bool isToBeOpen)>;
    // Does so to each port, without keeping others from the lists. True when something changed.
    bool settle(PortDirection direction, const Settle& settle);
    // Which of the ports of its name the one at a place is, counted from 0.
    [[nodiscard]] int repetition(PortDirection direction, int place) const;

    [[nodiscard]] std::vector<Backend::MidiInputPort> inputs() const;   // [any]
    [[nodiscard]] std::vector<Backend::MidiOutputPort> outputs() const; // [any]
    // For the next settle(); false where there is no port. [any]
    bool enable(PortDirection direction, int place, bool on);

private:
    [[nodiscard]] PortRoster& roster(PortDirection direction);
    [[nodiscard]] const PortRoster& roster(PortDirection direction) const;

    const PortArrangement arrangement_;
    const std::string system_;
    mutable std::mutex mutex_; // over the rosters
    PortRoster inputs_;
    PortRoster outputs_;
};

} // namespace Host
