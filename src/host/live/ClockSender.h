// Gives the beat to other devices: MIDI clock on chosen outputs.
#pragma once

#include "host/live/ClockedEngine.h"
#include "host/live/MidiSystem.h"
#include "values/QelMidiMessage.h"
#include "values/Ticks.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace Host {

// 24 clocks a quarter note, with each twentieth tick from the first one on. The clock's thread sends; everything it
// sends goes under the engine lock, as all that goes to a MidiSystem.
class ClockSender final {
public:
    // Outputs whose names contain one of the parts. The system outlives the sender.
    ClockSender(MidiSystem& system, std::vector<std::string> parts) : system_(system), parts_(std::move(parts)) {}

    // The ports have changed. [any]
    void lookAtPorts();
    [[nodiscard]] bool isSilent() const noexcept { return parts_.empty(); } // [any] for ever
    // True for messages of a clock that another device has sent and that would come twice. [any]
    [[nodiscard]] bool displaces(const Backend::MidiEngine::QelMidiMessage& message) const noexcept;

    // A tick is played for the first time; later calls for the same tick do nothing. [clock]
    void tick(Backend::Ticks tick) noexcept;
    // A transport begins or halts: Start; Song Position and Continue; Stop. What is not said again is not sent again.
    // [any]
    void transport(Transport transport, std::int32_t sixteenth) noexcept;

private:
    static constexpr int maxOutputs = 128;

    [[nodiscard]] bool sendsTo(int output) const noexcept;
    void sendToAll(Backend::MidiEngine::MessageType type, Backend::Ticks tick, int position = 0) noexcept;

    MidiSystem& system_;
    std::vector<std::string> parts_;
    std::atomic<std::uint64_t> outputs_[maxOutputs / 64]{}; // a bit each
    Backend::Ticks last_ = Backend::noTicks;                // [clock]
};

} // namespace Host
