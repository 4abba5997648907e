// From a key's or a plain message's posting to the player's call, through the whole backend, live.
#include "BenchPlayer.h"
#include "backend/QelFactory.h"
#include "core/MessageManagerMaster.h"
#include "core/QelMessageManager.h"
#include "host/live/SleepingClock.h"
#include "midiengine/MidiEngine.h"
#include "platform/Clocks.h"
#include "values/Key.h"

#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

namespace {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;
using std::chrono::nanoseconds;

constexpr std::size_t most = 40'000;

// What is posted one after the other is played in that order, one message each.
class OrderedPlayer final : public BenchPlayer {
public:
    void play(const QelMidiMessage& message, bool keepHeldNotes) override {
        const std::size_t number = arrived.load(std::memory_order_relaxed);
        if (number < most) {
            latencies[number] = Platform::monotonicTime() - nanoseconds{posted[number].load(std::memory_order_acquire)};
        }
        BenchPlayer::play(message, keepHeldNotes);
        arrived.fetch_add(1, std::memory_order_release);
    }
    void eventsArrived() override {
        if (Host::Clock* const waking = clock.load()) {
            tempoSource_ == 255 ? waking->wake() : waking->eventsArrived();
        }
    }
    void setTempoSource(unsigned char source) override { tempoSource_ = source; }
    [[nodiscard]] unsigned char getTempoSource() override { return tempoSource_; }

    std::atomic<Host::Clock*> clock = nullptr;
    std::vector<std::atomic<std::int64_t>> posted = std::vector<std::atomic<std::int64_t>>(most);
    std::vector<nanoseconds> latencies = std::vector<nanoseconds>(most);
    std::atomic<std::size_t> arrived = 0;

private:
    std::atomic<unsigned char> tempoSource_ = 0;
};

// The backend with one output, playing by a clock of its own.
class LiveBackend final : private Host::ClockedEngine {
public:
    LiveBackend() {
        Backend::QelMessageManager& backend = qel_->getQelMessageManager();
        backend.sendInitialize();
        std::vector<Backend::MidiOutputPort> outputs(1);
        outputs[0].enabled = true;
        backend.sendSetMidiOutputPorts(outputs);
        clock_.start();
        player.clock = &clock_;
        backend.sendEndInitialize();
        std::this_thread::sleep_for(std::chrono::milliseconds(100)); // the built-in program has arrived
        player.arrived = 0;
        player.fingerprint.clear();
    }
    ~LiveBackend() {
        qel_->getQelMessageManager().sendEnd();
        qel_->getMessageManagerMaster().stop();
        player.clock = nullptr;
        clock_.stop();
        qel_.reset();
        std::filesystem::remove_all(folder_);
    }
    LiveBackend(const LiveBackend&) = delete;
    LiveBackend& operator=(const LiveBackend&) = delete;

    // The key Q, down and up in turn, or the same notes as plain messages.
    void post(std::size_t number, bool asKey) {
        static const Key q("Q");
        player.posted[number].store(Platform::monotonicTime().count(), std::memory_order_release);
        Backend::QelMessageManager& backend = qel_->getQelMessageManager();
        const bool down = number % 2 == 0;
        if (!asKey) {
            backend.postPlayMidi(
                {down ? MessageType::noteOn : MessageType::noteOff, 60, 100, -1, -1, 0, -1, Backend::noTicks});
        } else if (down) {
            backend.postKeyDown(q, false);
        } else {
            backend.postKeyUp(q);
        }
    }
    void waitFor(std::size_t messages) const {
        while (player.arrived.load(std::memory_order_acquire) < messages) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    OrderedPlayer player;

private:
    void playTimeSlice(Backend::Ticks from, Backend::Ticks to) override {
        qel_->getMidiEngine().playTimeSlice(from, to);
    }
    [[nodiscard]] bool isTickDependent() override { return qel_->getMidiEngine().isTickDependent(); }
    void timeJumped() override {}

    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / ("tembrel-bench-" + std::to_string(Platform::monotonicTime().count()));
    std::unique_ptr<Backend::QelIF> qel_ =
        Backend::QelFactory::createQel("Bench", player, false, Backend::Surroundings::inFolder(folder_));
    Host::SleepingClock clock_{*this, 120};
};

// One event each millisecond: nothing waits for another.
void toPlay(benchmark::State& state) {
    const bool asKey = state.range(0) != 0;
    constexpr std::size_t events = 4'000;
    LiveBackend live;
    for (auto _ : state) {
        for (std::size_t i = 0; i < events; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            live.post(i, asKey);
        }
        live.waitFor(events);
    }
    std::vector<nanoseconds> sorted(live.player.latencies.begin(), live.player.latencies.begin() + events);
    std::sort(sorted.begin(), sorted.end());
    state.counters["median_us"] = static_cast<double>(sorted[events / 2].count()) / 1000;
    state.counters["p99_us"] = static_cast<double>(sorted[events * 99 / 100].count()) / 1000;
    state.SetLabel(live.player.fingerprint.text());
}
BENCHMARK(toPlay)->ArgName("key")->Arg(0)->Arg(1)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

// 10,000 keys a second for four seconds: how many were ever on their way at once.
void keyStorm(benchmark::State& state) {
    LiveBackend live;
    std::size_t mostWaiting = 0;
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        for (std::size_t i = 0; i < most; ++i) {
            std::this_thread::sleep_until(begin + std::chrono::microseconds(100) * static_cast<int>(i));
            live.post(i, true);
            mostWaiting = std::max(mostWaiting, i + 1 - live.player.arrived.load(std::memory_order_acquire));
        }
        live.waitFor(most);
    }
    state.counters["most_waiting"] = static_cast<double>(mostWaiting);
    state.SetLabel(live.player.fingerprint.text());
}
BENCHMARK(keyStorm)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

} // namespace
