// The player of the running controller: a MIDI system and its clock.
#pragma once

#include "host/live/Clock.h"
#include "host/live/ClockSender.h"
#include "host/live/ClockedEngine.h"
#include "host/live/MidiSystem.h"
#include "host/live/RoadMeter.h"
#include "midiengine/MidiPlayer.h"
#include "platform/AutoResetEvent.h"
#include "platform/Threads.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Backend {
class Barrier;
class QelIF;
namespace MidiEngine {
class MidiEngine;
}
} // namespace Backend

namespace Host {

class EventPrinter;

// Its life: construction, the backend's with its ports, start(), stop(), the end of the backend. What arrives goes to
// the backend; a thread of its own posts what the clock, which must not wait, has to say.
class LivePlayer final : public Backend::MidiEngine::MidiPlayer, private ClockedEngine, private MidiSystemListener {
public:
    explicit LivePlayer(std::unique_ptr<MidiSystem> system);
    ~LivePlayer() override;

    // Everything that is played is given to the printer, too. It outlives the player. Before start(). [main]
    void printTo(EventPrinter& printer) { printers_.push_back(&printer); }

    // MIDI clock goes out on the outputs whose names contain one of these. Before start(). [main]
    void sendClockTo(std::vector<std::string> parts);
    // Whatever programs say, this is the tempo source. Before the backend has started. [main]
    void fixTempoSource(std::uint8_t source);

    // Starts clock and ports. `qel` is initialised, and lives until stop(). [main]
    void start(Backend::QelIF& qel);
    // Stops the oscillators, lets no further note begin, ends every one that sounds, sends what is due, closes the
    // ports, and keeps the clock going for whoever still waits for it. [main]
    void releaseAll();
    // Stops the clock. The backend has ended (Session::end), but is still there. Harmless when repeated. [main]
    void stop();

    [[nodiscard]] MidiSystem& system() noexcept { return *system_; }
    [[nodiscard]] const MidiSystem& system() const noexcept { return *system_; }
    // The tick that the clock is in. [any]
    [[nodiscard]] Backend::Ticks now() const noexcept { return clock_->now(); }
    // False while a tempo source is followed but not heard. [any]
    [[nodiscard]] bool hasBeat() const noexcept;
    [[nodiscard]] Tempo tempo() const noexcept { return clock_->sync().tempo(); } // [any] as it is played
    [[nodiscard]] int heldNotes() const noexcept { return held_.load(std::memory_order_relaxed); } // [any] on outputs
    // Sends a probe the way that events go; what the latest of them took. Between start() and releaseAll(). [main]
    void sendProbe();
    [[nodiscard]] RoadMeter::Reading road() const noexcept { return road_.reading(clock_->evenLatency()); }

    // MidiPlayer
    void play(const Backend::MidiEngine::QelMidiMessage& message, bool keepHeldNotes) override;
    void enableMidiInput(int port, bool on) override;
    void enableMidiOutput(int port, bool on) override;
    void eventsArrived() override;
    void setTempo(int beatsPerMinute) override;
    void setTempoSource(unsigned char source) override;
    [[nodiscard]] unsigned char getTempoSource() override;
    [[nodiscard]] TickTime tickTime() override { return clock_->tickTime(); }

private:
    // ClockedEngine
    void playTimeSlice(Backend::Ticks from, Backend::Ticks to) override;
    [[nodiscard]] bool isTickDependent() override;
    void timeJumped() override;
    void transportChanged(Transport transport, std::int32_t sixteenth) override;
    // MidiSystemListener
    void received(std::vector<Backend::MidiEngine::QelMidiMessage> messages,
                  const std::function<void()>& taken) override;
    void portsChanged() override;

    void count(const Backend::MidiEngine::QelMidiMessage& message) noexcept;
    void runErrands();
    void stopOscillators();
    void sendBeat(Backend::Ticks tick);

    std::unique_ptr<MidiSystem> system_;
    std::unique_ptr<Clock> clock_;
    Backend::QelIF* qel_ = nullptr;
    Backend::MidiEngine::MidiEngine* engine_ = nullptr;
    RoadMeter road_;
    std::unique_ptr<Backend::Barrier> probe_; // null before the first; not open: on its way
    std::vector<EventPrinter*> printers_;
    std::atomic<unsigned char> tempoSource_ = 0;
    std::optional<std::uint8_t> fixedTempoSource_;
    std::unique_ptr<ClockSender> clockSender_; // null: no clock goes out
    bool beatsOfOurOwn_ = false;               // [clock] Start has been sent
    bool ending_ = false;                      // under the engine lock

    // Which notes sound, a bit for each output, channel and note. Under the engine lock.
    std::array<std::uint64_t, 128 * 16 * 2> sounding_{};
    std::atomic<int> held_ = 0;

    std::atomic<bool> timeJumped_ = false;
    std::atomic<bool> stopping_ = false;
    Platform::AutoResetEvent errand_;
    std::unique_ptr<Platform::Thread> errands_;
};

} // namespace Host
