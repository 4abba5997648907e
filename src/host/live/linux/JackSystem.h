// Ports of a JACK server, or of PipeWire in its place.
#pragma once

#include "host/live/MidiSystem.h"
#include "host/live/PortRoster.h"
#include "host/live/PortWishes.h"
#include "host/live/linux/JackNeighbours.h"
#include "host/live/linux/JackProcess.h"
#include "platform/AutoResetEvent.h"
#include "platform/Result.h"
#include "platform/Threads.h"

#include <array>
#include <atomic>
#include <chrono>
#include <jack/jack.h>
#include <map>
#include <memory>
#include <mutex>

namespace Host {

// The client "Tembrel" with an input "in" and an output "out", to which the user connects what he likes; in the lists
// both are called "Tembrel". The ports of others are listed too. One that is opened gets a port of ours of its own,
// which is connected to it. A server that dies takes all ports with it; another is looked for every second, and then
// everything that was open is opened again.
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
    using Direction = JackDirection;

    explicit JackSystem(const PortWishes& wishes);

    // The watcher's; before start() the opener's.
    void watch();
    void attach(jack_client_t* client);
    void detach();
    // Brings the lists up to date, opens and closes what has to be, and says so.
    void look();
    void lookAt(const std::vector<std::string>& in, const std::vector<std::string>& out);
    [[nodiscard]] Platform::Outcome lookFirst();
    bool settle(Direction direction);
    [[nodiscard]] jack_port_t* openPort(Direction direction, const std::string& name);
    // Connects our port at that place to the one it is for; false when it has to be tried again.
    bool connect(Direction direction, int place, const std::string& name);
    void connectSynthesizer();

    void handOn(); // the input thread
    // The tick in which a message came in; none without a clock.
    [[nodiscard]] Backend::Ticks tickOf(std::int64_t frame) const;
    [[nodiscard]] std::vector<std::string> names(Direction direction);
    [[nodiscard]] PortRoster& roster(Direction direction) { return direction == Direction::in ? inputs_ : outputs_; }

    PortWishes wishes_;
    std::shared_ptr<JackProcess> process_ = std::make_shared<JackProcess>();
    std::atomic<PeriodClock*> clock_ = nullptr;
    MidiSystemListener* listener_ = nullptr;

    jack_client_t* client_ = nullptr; // the watcher's
    std::uint32_t connections_ = 0;
    std::atomic<bool> lost_ = false;
    JackNeighbours neighbours_;
    std::map<std::string, std::chrono::nanoseconds> hiddenUntil_; // ports that are about to go
    std::array<std::array<jack_port_t*, PortRoster::maxPlaces>, 2> ports_{};
    std::array<std::array<bool, PortRoster::maxPlaces>, 2> connected_{}; // once; the user may part them again
    bool lookAgain_ = false;                                             // soon, without being told

    mutable std::mutex mutex_; // over the rosters
    PortRoster inputs_;
    PortRoster outputs_;
    std::atomic<std::uint64_t> unsendable_ = 0;

    Platform::AutoResetEvent wake_;
    std::atomic<bool> stopping_ = false;
    std::unique_ptr<Platform::Thread> watcher_;
    std::unique_ptr<Platform::Thread> inputThread_;
};

} // namespace Host
