// From postPlayMidi to the player's call, live: 10,000 messages at random times.
#include "BenchPlayer.h"
#include "host/live/SleepingClock.h"
#include "midiengine/MidiEngine.h"
#include "platform/Clocks.h"
#include "platform/Threads.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <pthread.h>
#include <random>
#include <sched.h>
#include <thread>

namespace {

using Backend::MidiEngine::MessageType;
using std::chrono::nanoseconds;

constexpr int messages = 10'000;

class EngineOfClock final : public Host::ClockedEngine {
public:
    explicit EngineOfClock(Backend::MidiEngine::MidiEngine& engine) : engine_(engine) {}
    void playTimeSlice(Backend::Ticks from, Backend::Ticks to) override { engine_.playTimeSlice(from, to); }
    bool isTickDependent() override { return engine_.isTickDependent(); }
    void timeJumped() override {}

private:
    Backend::MidiEngine::MidiEngine& engine_;
};

// Each message carries its number in its 14 data bits.
class TimingPlayer final : public BenchPlayer {
public:
    void play(const Backend::MidiEngine::QelMidiMessage& message, bool keepHeldNotes) override {
        const nanoseconds now = Platform::monotonicTime();
        const auto number = static_cast<std::size_t>(message.getD1()) << 7U | static_cast<std::size_t>(message.getD2());
        latencies[number] = now - posted[number];
        BenchPlayer::play(message, keepHeldNotes);
        arrived.fetch_add(1, std::memory_order_release);
    }
    void eventsArrived() override { clock->eventsArrived(); }

    Host::Clock* clock = nullptr;
    std::array<nanoseconds, messages> posted{};
    std::array<nanoseconds, messages> latencies{};
    std::atomic<int> arrived = 0;
};

// Keeps the last core busy while it lives.
class BusyCore final {
public:
    explicit BusyCore(bool busy) : busy_(busy) {
        if (busy) {
            thread_ = std::thread([this] {
                cpu_set_t core;
                CPU_ZERO(&core);
                CPU_SET(std::thread::hardware_concurrency() - 1, &core);
                pthread_setaffinity_np(pthread_self(), sizeof core, &core);
                while (busy_.load(std::memory_order_relaxed)) {
                }
            });
        }
    }
    ~BusyCore() {
        busy_ = false;
        if (thread_.joinable()) {
            thread_.join();
        }
    }
    BusyCore(const BusyCore&) = delete;
    BusyCore& operator=(const BusyCore&) = delete;

private:
    std::atomic<bool> busy_;
    std::thread thread_;
};

void postToPlay(benchmark::State& state) {
    const BusyCore otherCore(state.range(1) != 0);
    TimingPlayer player;
    Backend::MidiEngine::MidiEngine engine(player);
    EngineOfClock clockedEngine(engine);
    Host::SleepingClock clock(clockedEngine, static_cast<int>(state.range(0)));
    player.clock = &clock;
    std::vector<Backend::MidiOutputPort> outputs(1);
    outputs[0].enabled = true;
    engine.setMidiOutputPorts(outputs);
    engine.setLayerList(Backend::Layers::defaultLayers());
    engine.initialize(0, true);
    clock.start();
    std::mt19937 random(1);
    std::exponential_distribution<double> gap(1.0 / 800); // microseconds
    for (auto _ : state) {
        player.arrived = 0;
        for (int i = 0; i < messages; ++i) {
            std::this_thread::sleep_for(std::chrono::microseconds(static_cast<int>(std::min(gap(random), 20'000.0))));
            player.posted[static_cast<std::size_t>(i)] = Platform::monotonicTime();
            engine.postPlayMidi({MessageType::controllerChange, static_cast<std::int8_t>(i >> 7),
                                 static_cast<std::int8_t>(i & 127), -1, -1, -1, -1, Backend::noTicks});
        }
        while (player.arrived.load(std::memory_order_acquire) < messages) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    clock.stop();
    engine.end();
    auto& sorted = player.latencies;
    std::sort(sorted.begin(), sorted.end());
    const auto at = [&sorted](double part) {
        return static_cast<double>(sorted[static_cast<std::size_t>(part * (messages - 1))].count()) / 1000;
    };
    state.counters["median_us"] = at(0.5);
    state.counters["p99_us"] = at(0.99);
    state.SetLabel(player.fingerprint.text());
}
BENCHMARK(postToPlay)
    ->ArgNames({"bpm", "busy"})
    ->ArgsProduct({{40, 240}, {0, 1}})
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kSecond);

} // namespace
