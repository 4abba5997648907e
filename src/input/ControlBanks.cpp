#include "input/ControlBanks.h"

namespace Backend::Controls {

using MidiEngine::MessageType;
using MidiEngine::MidiMessage;
using MidiEngine::QelMidiMessage;

namespace {
constexpr std::int8_t coarseBankSelect = 0;
constexpr std::int8_t fineBankSelect = 32;
} // namespace

void ControlBanks::remember(const ValueEvent& event, std::int32_t value) {
    if (event.message.isBankMsb()) {
        stateOf(event).chosen.coarse = value;
    } else if (event.message.isBankLsb()) {
        stateOf(event).chosen.fine = value;
    }
}

std::vector<QelMidiMessage> ControlBanks::takeSelectsFor(const ValueEvent& programChange, const Cell& fromControl) {
    State& state = stateOf(programChange);
    std::vector<QelMidiMessage> selects;
    if (state.chosen == state.ofLastProgramChange) {
        return selects;
    }
    state.ofLastProgramChange = state.chosen;
    const auto add = [&](std::int8_t controller, const std::optional<std::int32_t>& value) {
        if (value) {
            ValueEvent select = programChange;
            select.message = MidiMessage(MessageType::controllerChange, controller);
            selects.push_back(select.withValue(*value, fromControl));
        }
    };
    add(coarseBankSelect, state.chosen.coarse);
    add(fineBankSelect, state.chosen.fine);
    return selects;
}

} // namespace Backend::Controls
