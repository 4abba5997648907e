// Which banks the controls have chosen, so that a program change always follows the bank that it belongs to.
#pragma once

#include "input/ValueEvent.h"

#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace Backend::Controls {

// Banks are kept for each zone, channel and output, the default ones being places of their own. [backend]
class ControlBanks final {
public:
    // Takes note of a bank select, coarse or fine, that went out; any other event is nothing to it.
    void remember(const ValueEvent& event, std::int32_t value);
    // What has to go out before a program change, in order: the bank selects of its place, coarse then fine, as far as
    // there have been any; nothing while they are those that went out before the program change before. The caller
    // sends them.
    [[nodiscard]] std::vector<MidiEngine::QelMidiMessage> takeSelectsFor(const ValueEvent& programChange,
                                                                         const Cell& fromControl);

private:
    struct Bank {
        std::optional<std::int32_t> coarse;
        std::optional<std::int32_t> fine;
        friend bool operator==(const Bank&, const Bank&) = default;
    };
    struct State {
        Bank chosen;
        Bank ofLastProgramChange;
    };
    using Place = std::tuple<std::int8_t, std::int8_t, std::int8_t>; // zone, channel, output

    [[nodiscard]] State& stateOf(const ValueEvent& event) { return states_[{event.zone, event.channel, event.output}]; }

    std::map<Place, State> states_;
};

} // namespace Backend::Controls
