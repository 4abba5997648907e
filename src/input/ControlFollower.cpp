#include "input/ControlFollower.h"

#include <algorithm>
#include <utility>

namespace Backend::Controls {

namespace {
constexpr std::size_t mostEvents = 0x10000; // of one control, as far as they are followed
} // namespace

ControlFollower::ControlFollower(const ControlMap& map, std::function<bool()> wake) : wake_(std::move(wake)) {
    for (const auto& [cell, control] : map) {
        if (!control.type.sends()) {
            continue;
        }
        for (std::size_t i = 0; i < std::min(control.events.size(), mostEvents); ++i) {
            const ValueEvent& event = control.events[i];
            if (event.canBeSent() && event.greatestValue() > 0) {
                bindings_.push_back({eventIdentity(event.message), event, slots_.size(), i});
            }
        }
        slots_.emplace_back(cell);
    }
    std::stable_sort(bindings_.begin(), bindings_.end(),
                     [](const Binding& a, const Binding& b) { return a.identity < b.identity; });
}

void ControlFollower::passed(const MidiEngine::QelMidiMessage& message, bool) {
    const std::uint32_t identity = eventIdentity(message.getMidiMessage());
    auto binding = std::lower_bound(bindings_.begin(), bindings_.end(), identity,
                                    [](const Binding& each, std::uint32_t wanted) { return each.identity < wanted; });
    bool moved = false;
    for (; binding != bindings_.end() && binding->identity == identity; ++binding) {
        if (!binding->event.matches(message)) {
            continue;
        }
        Slot& slot = slots_[binding->slot];
        const auto value = static_cast<std::uint32_t>(binding->event.valueIn(message));
        slot.passed = validBit | (slot.cell == message.getFromControl() ? ownBit : 0) |
                      static_cast<std::uint64_t>(binding->number) << 32 | value;
        moved = true;
    }
    if (moved && !isAwake_.exchange(true) && !wake_()) {
        isAwake_ = false;
    }
}

} // namespace Backend::Controls
