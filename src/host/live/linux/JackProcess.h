// What happens in JACK's process callback: MIDI in, MIDI out, frames.
#pragma once

#include "core/SpscRing.h"
#include "host/live/DueQueue.h"
#include "host/live/ExchangeGuard.h"
#include "host/live/MidiBytes.h"
#include "host/live/PeriodClock.h"
#include "host/live/PortRoster.h"
#include "host/live/RoomForEnds.h"
#include "platform/AutoResetEvent.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <jack/jack.h>
#include <limits>
#include <memory>

namespace Host {

// Ports are known by their places. [process] is JACK's real-time thread: nothing there allocates, waits or locks.
// While a server hangs, what is to be sent waits; when it goes on, notes that would have begun meanwhile do not begin,
// and all else leaves within a quarter of a second.
class JackProcess final {
public:
    struct Arrived {
        std::int64_t frame = 0;
        MidiBytes bytes;
        std::uint8_t place = 0;
    };

    JackProcess();

    // A client is about to be activated; `connection` counts them. Ports of the one before are forgotten, and what
    // waits for them. [watcher]
    void connect(jack_client_t* client, std::uint32_t connection);
    // The client is gone or about to be closed. [watcher]
    void disconnect();
    [[nodiscard]] jack_client_t* client() const noexcept { return client_.load(); } // [any]
    // One period. [process]
    void process(jack_nframes_t frames) noexcept;

    // Exchanges the port at a place; null: none. The callback does not use the old one afterwards. [watcher]
    void setInput(int place, jack_port_t* port);
    void setOutput(int place, jack_port_t* port);
    // Told of each period; null: nobody. [main]
    void setClock(PeriodClock* clock);

    // Queues a message to leave at frame `due`, or at the first frame that is possible and behind all that was queued
    // before on its port (PeriodClock::asSoonAsPossible): what ends a note must not overtake it. False when it cannot
    // be sent, as when too much waits already; what ends a note that was sent always can. [any thread under the engine
    // lock]
    [[nodiscard]] bool send(int place, const MidiBytes& bytes, std::int64_t due) noexcept;
    // Whether all that was queued has been handed to JACK. [any]
    [[nodiscard]] bool isIdle() const noexcept { return waiting_.load(std::memory_order_acquire) == 0; }
    // Counts the periods. [any]
    [[nodiscard]] std::uint32_t periods() const noexcept { return periods_.load(std::memory_order_acquire); }

    // The oldest message that came in; false when there is none. [input]
    [[nodiscard]] bool takeArrived(Arrived& arrived) noexcept { return arrivals_.pop(arrived); }
    // Signalled when something came in.
    [[nodiscard]] Platform::AutoResetEvent& arrivalEvent() noexcept { return arrivalEvent_; }

    struct Counters {
        std::atomic<std::uint64_t> sysEx = 0;
        std::atomic<std::uint64_t> malformed = 0;
        std::atomic<std::uint64_t> arrivalsLost = 0;
        std::atomic<std::uint64_t> overflows = 0;
        std::atomic<std::uint64_t> late = 0;
    };
    [[nodiscard]] const Counters& counters() const noexcept { return counters_; }

private:
    struct Departing {
        DueMessage message;
        std::uint8_t place = 0;
        bool soon = false; // has no time of its own, so is never late
    };
    struct Output {
        std::atomic<jack_port_t*> port = nullptr;
        std::atomic<bool> closing = false;
        std::atomic<DueQueue*> queue = nullptr;
        std::unique_ptr<DueQueue> ownedQueue; // made with the first port, kept
    };

    [[nodiscard]] TransportReading readTransport(const PeriodClock& clock) const noexcept;
    void updateFrame() noexcept;
    // Whether so much time has passed since the last period that what waits is old.
    [[nodiscard]] bool comesLate() noexcept;
    // Both give the frame of the last message that came in, -1 for none.
    [[nodiscard]] std::int64_t readInputs(jack_nframes_t frames) noexcept;
    [[nodiscard]] std::int64_t readInput(std::uint8_t place, jack_port_t* port, jack_nframes_t frames) noexcept;
    void limitDues(jack_nframes_t frames) noexcept;
    void sortDepartures(bool areOld) noexcept;
    void writeOutput(Output& output, jack_nframes_t frames) noexcept;
    void forgetQueued() noexcept;
    void left(std::int64_t messages) noexcept { waiting_.fetch_sub(messages, std::memory_order_release); }

    std::array<std::atomic<jack_port_t*>, PortRoster::maxPlaces> inputs_{};
    std::array<Output, PortRoster::maxPlaces> outputs_{};
    std::atomic<int> inputPlaces_ = 0; // all ports are below
    std::atomic<int> outputPlaces_ = 0;
    std::atomic<PeriodClock*> clock_ = nullptr;
    std::atomic<jack_client_t*> client_ = nullptr;
    std::atomic<std::uint32_t> connection_ = 0;
    ExchangeGuard processing_;

    Backend::SpscRing<Arrived> arrivals_;
    Backend::SpscRing<Departing> departures_;
    std::atomic<std::int64_t> waiting_ = 0;
    std::atomic<std::uint32_t> periods_ = 0;
    std::atomic<std::int64_t> latestDue_ =
        std::numeric_limits<std::int64_t>::max(); // nothing is due later than this frame
    Platform::AutoResetEvent arrivalEvent_;
    Counters counters_;

    // [process]
    std::int64_t frame_ = 0; // of the period's first frame, counted on where JACK's 32 bits wrap
    std::uint32_t seenConnection_ = 0;
    std::chrono::nanoseconds lastPeriodAt_{0};

    // Under the engine lock.
    RoomForEnds room_;
    std::array<std::int64_t, PortRoster::maxPlaces> lastDue_{};
    std::uint32_t dueConnection_ = 0;
};

} // namespace Host
