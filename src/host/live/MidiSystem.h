// A system of MIDI ports: JACK, ALSA, WinMM, or none.
#pragma once

#include "host/live/Clock.h"
#include "host/live/ClockedEngine.h"
#include "values/MidiPort.h"
#include "values/QelMidiMessage.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Host {

// Who wants to know what a system's ports do. Called on threads of the system's own, which may be kept waiting.
class MidiSystemListener {
public:
    // Messages that arrived on open inputs, in order of time. With `taken`, comes back only when the engine has them,
    // and `taken` was called then, at once, by another thread, which it must not keep waiting.
    virtual void received(std::vector<Backend::MidiEngine::QelMidiMessage> messages,
                          const std::function<void()>& taken) = 0;
    // inputs() or outputs() give something else than before.
    virtual void portsChanged() = 0;

protected:
    ~MidiSystemListener() = default;
};

// What went wrong without anybody waiting for it.
struct MidiSystemCounts {
    std::uint64_t sysExDropped = 0;     // incoming
    std::uint64_t malformedDropped = 0; // incoming
    std::uint64_t arrivalsLost = 0;     // incoming, for want of room
    std::uint64_t unsendable = 0;       // outgoing: no port, or nothing that a port may send
    std::uint64_t overflows = 0;        // outgoing, for want of room
    std::uint64_t late = 0;             // outgoing, after their time
};

// Ports keep their places: one that vanishes is listed as not present and not enabled, and takes its place again when
// it returns, open if it was.
class MidiSystem {
public:
    virtual ~MidiSystem() = default;
    MidiSystem(const MidiSystem&) = delete;
    MidiSystem& operator=(const MidiSystem&) = delete;

    [[nodiscard]] virtual std::string name() const = 0; // "JACK", "ALSA", "WinMM", "none"
    // The clock by which this system plays; the system outlives it. [main] once
    [[nodiscard]] virtual std::unique_ptr<Clock> createClock(ClockedEngine& engine) = 0;

    // Lets messages in and watches the ports from here on; the ports that are wanted are open already. [main]
    virtual void start(MidiSystemListener& listener) = 0;
    // Sends what is due and closes everything; the listener is not called afterwards. The clock still runs. [main]
    virtual void stop() = 0;

    [[nodiscard]] virtual std::vector<Backend::MidiInputPort> inputs() const = 0;   // [any]
    [[nodiscard]] virtual std::vector<Backend::MidiOutputPort> outputs() const = 0; // [any]
    // Opens or closes a port; portsChanged follows. Places that there are not do nothing. [engine]
    virtual void enableInput(int place, bool on) = 0;
    virtual void enableOutput(int place, bool on) = 0;

    // Sends a message on the output that it names. Neither blocks nor throws. [any thread under the engine lock]
    virtual void send(const Backend::MidiEngine::QelMidiMessage& message) noexcept = 0;

    [[nodiscard]] virtual MidiSystemCounts counts() const noexcept = 0; // [any]

protected:
    MidiSystem() = default;
};

} // namespace Host
