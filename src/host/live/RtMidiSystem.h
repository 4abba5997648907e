// MIDI devices through RtMidi: ALSA on Linux, WinMM on Windows.
#pragma once

#include "host/live/ExchangeGuard.h"
#include "host/live/MidiSystem.h"
#include "host/live/PortLists.h"
#include "host/live/PortRoster.h"
#include "host/live/PortWishes.h"
#include "platform/AutoResetEvent.h"
#include "platform/Result.h"
#include "platform/Threads.h"

#include <array>
#include <atomic>
#include <memory>

class RtMidiIn;
class RtMidiOut;

namespace Host {

class SleepingClock;

// Where the system can make ports of our own, "Tembrel" is one input and one output. Devices are looked for twice a
// second by a thread that also opens and closes them.
class RtMidiSystem final : public MidiSystem {
public:
    // Opens what is wished for. A fault where there is no such system, or no port for a wish. [main]
    [[nodiscard]] static Platform::Result<std::unique_ptr<RtMidiSystem>> open(const PortWishes& wishes);
    ~RtMidiSystem() override;

    [[nodiscard]] std::string name() const override;
    [[nodiscard]] std::unique_ptr<Clock> createClock(ClockedEngine& engine) override;
    void start(MidiSystemListener& listener) override;
    void stop() override;
    [[nodiscard]] std::vector<Backend::MidiInputPort> inputs() const override { return lists_.inputs(); }
    [[nodiscard]] std::vector<Backend::MidiOutputPort> outputs() const override { return lists_.outputs(); }
    void enableInput(int place, bool on) override { enable(PortDirection::in, place, on); }
    void enableOutput(int place, bool on) override { enable(PortDirection::out, place, on); }
    void send(const Backend::MidiEngine::QelMidiMessage& message) noexcept override;
    [[nodiscard]] MidiSystemCounts counts() const noexcept override;

    // Whether there is any port. [main]
    [[nodiscard]] bool hasPorts() const;

private:
    struct Input;

    explicit RtMidiSystem(const PortWishes& wishes);
    [[nodiscard]] Platform::Outcome listFirst();
    void watch();
    // One look at the ports: opens and closes what has to be.
    void look();
    // True when something changed.
    bool settle();
    bool settleInput(int place, const std::string& name, bool isToBeOpen);
    bool settleOutput(int place, const std::string& name, bool isToBeOpen);
    [[nodiscard]] std::unique_ptr<Input> openInput(int place, const std::string& name);
    [[nodiscard]] std::unique_ptr<RtMidiOut> openOutput(int place, const std::string& name);
    void closeOutput(int place);
    void enable(PortDirection direction, int place, bool on);
    void arrived(int place, const std::vector<unsigned char>& bytes) noexcept;

    PortWishes wishes_;
    PortLists lists_;
    std::unique_ptr<RtMidiIn> inputLister_;
    std::unique_ptr<RtMidiOut> outputLister_;
    std::atomic<MidiSystemListener*> listener_ = nullptr;
    std::atomic<SleepingClock*> clock_ = nullptr;

    // The watcher's, and before start the opener's.
    std::array<std::unique_ptr<Input>, PortRoster::maxPlaces> openInputs_;
    std::array<std::unique_ptr<RtMidiOut>, PortRoster::maxPlaces> openOutputs_;
    // What the clock sends through.
    std::array<std::atomic<RtMidiOut*>, PortRoster::maxPlaces> sendingOutputs_{};
    ExchangeGuard sending_;

    std::atomic<std::uint64_t> sysEx_ = 0;
    std::atomic<std::uint64_t> malformed_ = 0;
    std::atomic<std::uint64_t> unsendable_ = 0;

    Platform::AutoResetEvent wake_;
    std::atomic<bool> stopping_ = false;
    std::unique_ptr<Platform::Thread> watcher_;
};

} // namespace Host
