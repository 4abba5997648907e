// Plays a performance through the backend as fast as the machine can, exactly.
#pragma once

#include "host/Performance.h"
#include "values/QelMidiMessage.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Backend {
class Barrier;
class QelIF;
namespace MidiEngine {
class MidiEngine;
}
namespace MidiInput {
struct MidiEventConfigurationMap;
}
} // namespace Backend

namespace Host {

class OfflinePlayer;

// Drives the engine's time, from engineTimeOrigin for tick 0. For each event of tick t: the slices up to t run; the
// event is handed in; empty slices (t, t) follow until backend, engine worker and pending queue have taken it in. So
// what it plays is played in tick t and what it changes holds from t on, and equal performances give equal events.
//
// Incoming messages whose handling only plays, as most do, need not wait for each other: they are handed in many at
// once, stamped, and the slices up to the last of them run while the next ones are on their way. Those for which
// something is configured that may change the program are events like any other.
class Renderer final {
public:
    static constexpr std::size_t usualBatch = 4096;

    // The backend is initialised, plays to `player`, and has seen no slice; both outlive the renderer. `batch`: how
    // many messages are handed in at once at most; with 0 each is handed in and waited for like any other event.
    Renderer(Backend::QelIF& qel, OfflinePlayer& player, std::size_t batch = usualBatch);
    ~Renderer();

    // Plays the performance and what follows it: until nothing is held, playing or scheduled, for `tail` ticks at
    // most (but through the tick of the last event), or to the tick of EndOfPerformance. Ends early when the sink has
    // failed. Gives the first tick that was not played. Once. [clock]
    std::int32_t render(Performance& performance, std::int32_t tail);

    // How many messages were handed in on input ports.
    [[nodiscard]] std::uint64_t incomingMessages() const { return incomingMessages_; }

private:
    struct Batch;

    void play(Performance& performance, std::int32_t tail);
    // False for a message that must be handed in by itself.
    [[nodiscard]] bool addToBatch(const PerformanceEvent& event);
    void handInBatch();
    void finishBatch(Batch& batch);
    void finishBatches();
    void handIn(const PerformanceEvent& event);
    void takeIn();
    void runTo(std::int32_t tick);
    void runTail(std::int32_t tail);
    void slice(std::int32_t from, std::int32_t to);
    void followTempo();

    Backend::QelIF& qel_;
    OfflinePlayer& player_;
    Backend::MidiEngine::MidiEngine& engine_;
    std::size_t batchSize_;
    std::int32_t now_ = 0; // the first tick that was not played
    int tempo_ = 0;        // as the sink knows it
    std::uint64_t incomingMessages_ = 0;
    std::shared_ptr<const Backend::MidiInput::MidiEventConfigurationMap> configured_; // when all was taken in last
    std::vector<Backend::MidiEngine::QelMidiMessage> messages_; // of the batch that is being collected
    std::unique_ptr<Batch> inFlight_;                           // handed in, not yet played
};

} // namespace Host
