// Messages a second through the engine, and what a tick costs in which nothing happens.
#include "BenchPlayer.h"
#include "Notes.h"
#include "midiengine/DisplayMessageManager.h"
#include "midiengine/MidiEngine.h"
#include "platform/Clocks.h"

#include <benchmark/benchmark.h>

namespace {

using Backend::engineTimeOrigin;
using Backend::Ticks;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

// An engine whose layers all take part, each with a channel of its own.
struct Bench {
    explicit Bench(int layers) {
        std::vector<Backend::MidiOutputPort> outputs(1);
        outputs[0].enabled = true;
        engine.setMidiOutputPorts(outputs);
        Backend::Layers::LayerList list(static_cast<std::size_t>(layers));
        for (int i = 0; i < layers; ++i) {
            list[static_cast<std::size_t>(i)].channel = static_cast<std::int8_t>(i % 16);
        }
        engine.setLayerList(list);
    }
    void playNote(std::uint32_t i) {
        const BenchNote note = benchNote(i);
        engine.playMidi({note.on ? MessageType::noteOn : MessageType::noteOff, note.key, note.velocity, -1, -1, -1, 0,
                         engineTimeOrigin});
    }
    std::string fingerprint() {
        player.fingerprint.clear();
        for (std::uint32_t i = 0; i < 100'000; ++i) {
            playNote(i);
        }
        return player.fingerprint.text();
    }

    BenchPlayer player;
    Backend::MidiEngine::MidiEngine engine{player};
};

struct CountingTap final : Backend::MidiEngine::EngineTap {
    std::uint64_t count = 0;
    void passed(const QelMidiMessage&, bool) override { ++count; }
};
struct CountingListener final : Backend::Display::DisplayListener {
    std::uint64_t count = 0;
    void messageSent(const Backend::Display::DisplayRecord&) override { ++count; }
};

void playMidi(benchmark::State& state) {
    Bench bench(static_cast<int>(state.range(0)));
    state.SetLabel(bench.fingerprint());
    std::uint32_t i = 0;
    for (auto _ : state) {
        bench.playNote(i++);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(playMidi)->ArgName("layers")->Arg(1)->Arg(8);

void playMidiWatched(benchmark::State& state) {
    Bench bench(static_cast<int>(state.range(0)));
    CountingTap recorder;
    CountingListener listener;
    Backend::Display::DisplayMessageManager display(bench.engine, Platform::millisecondTime);
    bench.engine.addTap(recorder);
    display.addListener(listener);
    state.SetLabel(bench.fingerprint());
    std::uint32_t i = 0;
    for (auto _ : state) {
        bench.playNote(i++);
    }
    state.SetItemsProcessed(state.iterations());
    display.removeListener(listener);
    // A display thread that is flooded drops: how much of it was shown belongs to the figure.
    state.counters["shown"] = static_cast<double>(listener.count) / static_cast<double>(recorder.count);
}
BENCHMARK(playMidiWatched)->ArgName("layers")->Arg(1)->Arg(8);

void idleTick(benchmark::State& state) {
    Bench bench(static_cast<int>(state.range(0)));
    const auto slice = Ticks{static_cast<std::int32_t>(state.range(1))};
    Ticks now = engineTimeOrigin;
    for (auto _ : state) {
        bench.engine.playTimeSlice(now, now + slice);
        now = now.count > 2'000'000'000 ? engineTimeOrigin : now + slice;
    }
    state.SetLabel(std::to_string(bench.player.played) + " played");
    state.counters["tick"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(state.range(1)),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(idleTick)->ArgNames({"layers", "slice"})->ArgsProduct({{0, 8, 64}, {1, 4800}});

} // namespace
