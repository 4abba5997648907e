// What a tick costs in which arpeggios and oscillators play.
#include "BenchPlayer.h"
#include "midiengine/MidiEngine.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>

namespace {

using Backend::engineTimeOrigin;
using Backend::Ticks;
using Backend::ArpeggioManagement::ArpeggioKind;
using Backend::ArpeggioManagement::ArpeggioSetting;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using Backend::MidiEngine::QelMidiMessage;
using Backend::Oscillators::Oscillator;
using Backend::Oscillators::OscillatorType;

constexpr std::int32_t fingerprintTicks = 20'000;

// Every shape in turn, speeds from a thirty-second to eight quarters, as they come by default.
Backend::Oscillators::OscList oscillators(int count) {
    Backend::Oscillators::OscList list;
    for (int i = 0; i < count; ++i) {
        Oscillator oscillator;
        oscillator.type = static_cast<OscillatorType>(i % 5);
        oscillator.speed = 60 << i % 7;
        oscillator.midiMessage = MidiMessage(MessageType::controllerChange, static_cast<std::int8_t>(i % 120));
        oscillator.output = 0;
        oscillator.channel = static_cast<std::int8_t>(i % 16);
        oscillator.playing = true;
        list.append(oscillator);
    }
    return list;
}

// Arpeggios of every kind, each on eight held notes, which sound for half a beat.
Backend::Layers::LayerList arpeggios(int count, std::int32_t beat) {
    Backend::Layers::LayerList list(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        auto& layer = list[static_cast<std::size_t>(i)];
        layer.index = i;
        layer.channel = static_cast<std::int8_t>(i % 16);
        layer.arpeggio = ArpeggioSetting{static_cast<ArpeggioKind>(i % 4), beat, std::max(beat / 2, 1)};
    }
    return list;
}

struct Bench {
    Bench(int layers, int oscillatorCount, std::int32_t beat) {
        std::vector<Backend::MidiOutputPort> outputs(1);
        outputs[0].enabled = true;
        engine.setMidiOutputPorts(outputs);
        engine.setLayerList(arpeggios(layers, beat));
        engine.setOscList(oscillators(oscillatorCount));
        for (int i = 0; layers > 0 && i < 8; ++i) {
            engine.playMidi({MessageType::noteOn, static_cast<std::int8_t>(48 + 3 * i), 100, -1, -1, -1, 0, now});
        }
    }
    // As the live clock runs a tick.
    void tick() {
        engine.playTimeSlice(now, now);
        engine.playTimeSlice(now, now + Ticks{1});
        ++now;
    }

    BenchPlayer player;
    Backend::MidiEngine::MidiEngine engine{player};
    Ticks now = engineTimeOrigin;
};

void tick(benchmark::State& state) {
    Bench bench(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)),
                static_cast<std::int32_t>(state.range(2)));
    for (std::int32_t i = 0; i < fingerprintTicks; ++i) {
        bench.tick();
    }
    state.SetLabel(bench.player.fingerprint.text());
    const std::uint64_t before = bench.player.played;
    for (auto _ : state) {
        bench.tick();
    }
    state.counters["messages"] =
        benchmark::Counter(static_cast<double>(bench.player.played - before), benchmark::Counter::kAvgIterations);
}
BENCHMARK(tick)
    ->ArgNames({"arpeggios", "oscillators", "beat"})
    ->Args({0, 0, 120})
    ->Args({0, 1, 120})
    ->Args({0, 64, 120})
    ->Args({64, 0, 120})
    ->Args({64, 64, 120})
    ->Args({64, 64, 1}); // all notes end and begin in each tick: the heaviest there is

// An hour of play at 120 beats a minute: a tick of its last minute against one of its first.
void hour(benchmark::State& state) {
    constexpr int ticksAMinute = 120 * Backend::ticksPerQuarter;
    Bench bench(64, 64, 120);
    const auto minute = [&bench] {
        const std::clock_t begin = std::clock();
        for (int i = 0; i < ticksAMinute; ++i) {
            bench.tick();
        }
        return static_cast<double>(std::clock() - begin) * 1e9 / CLOCKS_PER_SEC / ticksAMinute;
    };
    for (auto _ : state) {
        state.counters["first"] = minute();
        for (int i = 0; i < 58; ++i) {
            minute();
        }
        state.counters["last"] = minute();
    }
}
BENCHMARK(hour)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
