#include "host/Renderer.h"

#include "core/Barrier.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "host/EventPoster.h"
#include "host/OfflinePlayer.h"
#include "midiengine/MidiEngine.h"
#include "midiinput/MidiEventConfigurationMap.h"

#include <algorithm>
#include <limits>

namespace Host {

namespace {

constexpr std::int32_t longestSlice = Backend::MidiEngine::MidiEngine::MAX_TIME_SLICE - 1;
// How often the tail asks whether it is over: what is silent then stays so, so that the result does not depend on it.
constexpr std::int32_t tailSlice = 240;

Backend::Ticks engineTime(std::int32_t tick) {
    return Backend::engineTimeOrigin + Backend::Ticks{tick};
}

} // namespace

// Messages on their way to the engine.
struct Renderer::Batch {
    std::int32_t lastTick = 0;
    Backend::Barrier barrier;
};

Renderer::Renderer(Backend::QelIF& qel, OfflinePlayer& player, std::size_t batch)
    : qel_(qel), player_(player), engine_(qel.getMidiEngine()), batchSize_(batch) {
    messages_.reserve(batchSize_);
}

Renderer::~Renderer() = default;

std::int32_t Renderer::render(Performance& performance, std::int32_t tail) {
    takeIn(); // what start-up has posted
    play(performance, tail);
    followTempo();
    return now_;
}

void Renderer::play(Performance& performance, std::int32_t tail) {
    PerformanceEvent event;
    while (performance.next(event)) {
        if (!player_.sink().isGood()) {
            finishBatches();
            return;
        }
        if (std::holds_alternative<MidiArrives>(event.what)) {
            ++incomingMessages_;
            if (batchSize_ > 0 && addToBatch(event)) {
                continue;
            }
        }
        finishBatches();
        runTo(event.tick);
        if (std::holds_alternative<EndOfPerformance>(event.what)) {
            return;
        }
        handIn(event);
    }
    finishBatches();
    takeIn();
    runTail(tail);
}

bool Renderer::addToBatch(const PerformanceEvent& event) {
    const auto& midi = std::get<MidiArrives>(event.what);
    if (isSysEx(midi)) {
        return true;
    }
    const auto message = incomingMessage(midi, engineTime(event.tick));
    if (!configured_->onlyPlays(message)) {
        return false;
    }
    messages_.push_back(message);
    if (messages_.size() == batchSize_) {
        handInBatch();
    }
    return true;
}

// Posts the collected messages and then, while they are taken in, plays the batch before.
void Renderer::handInBatch() {
    auto batch = std::make_unique<Batch>();
    batch->lastTick = (messages_.back().getPpq() - Backend::engineTimeOrigin).count;
    auto& backend = qel_.getQelMessageManager();
    std::vector<Backend::MidiEngine::QelMidiMessage> next;
    next.reserve(batchSize_);
    messages_.swap(next);
    backend.postProcessMidiInputEvents(std::move(next));
    if (!backend.postBarrier(batch->barrier)) {
        batch->barrier.open();
    }
    inFlight_.swap(batch);
    if (batch) {
        finishBatch(*batch);
    }
}

void Renderer::finishBatch(Batch& batch) {
    batch.barrier.wait();
    runTo(batch.lastTick);
}

void Renderer::finishBatches() {
    if (!messages_.empty()) {
        handInBatch();
    }
    if (inFlight_) {
        finishBatch(*inFlight_);
        inFlight_.reset();
    }
}

void Renderer::handIn(const PerformanceEvent& event) {
    postEvent(event, qel_, engineTime(event.tick));
    takeIn();
}

// Waits until everything posted has reached the engine's pending queue, with empty slices for what waits for the
// clock on its way there, and lets the engine take it in.
void Renderer::takeIn() {
    Backend::Barrier barrier([this] { player_.wake(); });
    if (qel_.getQelMessageManager().postBarrier(barrier)) {
        player_.watchArrivals(true);
        while (!barrier.isOpen()) {
            if (player_.takeArrived()) {
                slice(now_, now_);
            } else {
                player_.wait();
            }
        }
        player_.watchArrivals(false);
    }
    slice(now_, now_);
    configured_ = qel_.getMidiInputMap();
    followTempo();
}

void Renderer::runTo(std::int32_t tick) {
    while (now_ < tick) {
        const std::int32_t to = now_ + std::min(longestSlice, tick - now_);
        slice(now_, to);
        now_ = to;
    }
}

void Renderer::runTail(std::int32_t tail) {
    const std::int32_t end =
        now_ + std::min(std::max(tail, 1), std::numeric_limits<std::int32_t>::max() - engineTime(now_).count);
    while (now_ < end && engine_.isBusy() && player_.sink().isGood()) {
        runTo(now_ + std::min(tailSlice, end - now_));
    }
}

void Renderer::slice(std::int32_t from, std::int32_t to) {
    player_.setPosition(from);
    engine_.playTimeSlice(engineTime(from), engineTime(to));
}

void Renderer::followTempo() {
    if (player_.tempo() != tempo_) {
        tempo_ = player_.tempo();
        player_.sink().setTempo(now_, tempo_);
    }
}

} // namespace Host
