// Brings what passes the engine to the controls that are bound to it.
#pragma once

#include "input/ControlMap.h"
#include "midiengine/EngineTap.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace Backend::Controls {

// Made for the controls of one moment. Each has a place for the latest value that passed for it: however much passes,
// nothing is lost that would be seen, nothing grows, and the clock thread neither allocates nor waits.
class ControlFollower final : public MidiEngine::EngineTap {
public:
    // A value that passed for a control.
    struct Passed {
        Cell cell;
        std::size_t event = 0; // of the control's events
        std::int32_t value = 0;
        bool own = false; // the control itself has sent it
    };

    // `wake` is called on the clock thread when there is something to drain, and not again before the next drain() once
    // it has said true; it must not block. Controls that send nothing follow nothing.
    ControlFollower(const ControlMap& map, std::function<bool()> wake);
    ControlFollower(const ControlFollower&) = delete;
    ControlFollower& operator=(const ControlFollower&) = delete;

    // True when no control is bound to anything.
    [[nodiscard]] bool isEmpty() const noexcept { return bindings_.empty(); }

    void passed(const MidiEngine::QelMidiMessage& message, bool swallowed) override; // [clock, backend]

    // Gives `take` what has passed since the last time, the latest for each control. [backend]
    template <typename Take> void drain(Take take) {
        isAwake_ = false;
        for (Slot& slot : slots_) {
            if (const std::uint64_t packed = slot.passed.exchange(nothing)) {
                take(Passed{slot.cell, static_cast<std::size_t>(packed >> 32 & 0xFFFF),
                            static_cast<std::int32_t>(packed & 0xFFFF'FFFF), (packed & ownBit) != 0});
            }
        }
    }

private:
    // Bits 0..31 the value, 32..47 the event.
    static constexpr std::uint64_t nothing = 0;
    static constexpr std::uint64_t validBit = std::uint64_t{1} << 63;
    static constexpr std::uint64_t ownBit = std::uint64_t{1} << 62;

    struct Slot {
        explicit Slot(const Cell& itsCell) : cell(itsCell) {}
        Slot(Slot&& other) noexcept : cell(other.cell) {}

        Cell cell;
        std::atomic<std::uint64_t> passed = nothing;
    };
    struct Binding {
        std::uint32_t identity = 0; // of the event; they are in this order
        ValueEvent event;
        std::size_t slot = 0;
        std::size_t number = 0; // of the event among those of its control
    };

    std::vector<Binding> bindings_;
    std::vector<Slot> slots_;
    std::function<bool()> wake_;
    std::atomic<bool> isAwake_ = false;
};

} // namespace Backend::Controls
