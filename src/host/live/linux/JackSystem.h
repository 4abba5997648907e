// Ports of a JACK server, or of PipeWire in its place.
#pragma once

#include "host/live/MidiSystem.h"
#include "host/live/PortWishes.h"
#include "platform/Result.h"
#include "platform/Threads.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>

namespace Host {

class AbandonableThread;
class JackPorts;
class PeriodClock;

// The client "Tembrel" with an input "in" and an output "out", to which the user connects what he likes; in the lists
// both are called "Tembrel". The ports of others are listed too. One that is opened gets a port of ours of its own,
// which is connected to it. A server that dies takes all ports with it; another is looked for every second, and then
// everything that was open is opened again. Only the watcher of the ports waits for a server that hangs.
class JackSystem final : public MidiSystem {
public:
    // Null when no server answers within `patience`; a fault when there is no port for a wish. [main]
    [[nodiscard]] static Platform::Result<std::unique_ptr<JackSystem>> open(const PortWishes& wishes,
                                                                            std::chrono::nanoseconds patience);
    ~JackSystem() override;

    [[nodiscard]] std::string name() const override { return "JACK"; }
    [[nodiscard]] std::unique_ptr<Clock> createClock(ClockedEngine& engine) override;
    void start(MidiSystemListener& listener) override;
    void stop() override;
    [[nodiscard]] std::vector<Backend::MidiInputPort> inputs() const override;
    [[nodiscard]] std::vector<Backend::MidiOutputPort> outputs() const override;
    void enableInput(int place, bool on) override;
    void enableOutput(int place, bool on) override;
    void send(const Backend::MidiEngine::QelMidiMessage& message) noexcept override;
    [[nodiscard]] MidiSystemCounts counts() const noexcept override;

private:
    explicit JackSystem(std::shared_ptr<JackPorts> ports);

    void handOn(); // the input thread
    // The tick in which a message came in; none without a clock.
    [[nodiscard]] Backend::Ticks tickOf(std::int64_t frame) const;

    const std::shared_ptr<JackPorts> ports_; // the watcher's, too
    std::unique_ptr<AbandonableThread> watcher_;
    std::atomic<PeriodClock*> clock_ = nullptr;
    MidiSystemListener* listener_ = nullptr;
    std::atomic<std::uint64_t> unsendable_ = 0;
    std::atomic<bool> stopping_ = false;
    std::unique_ptr<Platform::Thread> inputThread_;
};

} // namespace Host
