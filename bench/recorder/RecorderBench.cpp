// What recording costs the clock thread beside a bare push into the same kind of queue, and whether anything is lost.
#include "BenchPlayer.h"
#include "backend/RecorderSection.h"
#include "core/SpscRing.h"
#include "generators/recording/BufferFiles.h"
#include "generators/recording/BufferReader.h"
#include "generators/recording/RecordQueue.h"
#include "midiengine/MidiEngine.h"
#include "platform/Clocks.h"
#include "platform/SafeFiles.h"
#include "platform/Threads.h"

#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <vector>

namespace {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;
using Backend::Recording::PlayedMessage;
using std::chrono::nanoseconds;

constexpr std::uint64_t events = 10'000'000;
constexpr std::uint64_t eventsASecond = 2'000'000;
constexpr std::uint64_t burst = 2'000; // a millisecond's

QelMidiMessage messageOf(std::uint64_t number) {
    return {MessageType::controllerChange,
            static_cast<std::int8_t>(number >> 7 & 0x7F),
            static_cast<std::int8_t>(number & 0x7F),
            static_cast<std::int8_t>(number >> 14 & 0x0F),
            0,
            QelMidiMessage::DEFAULT_ZONE,
            QelMidiMessage::DEFAULT_INPUT,
            Backend::engineTimeOrigin};
}

// Gives all events to `push` in bursts at the rate; the time spent in it is the iteration's. The messages of a burst
// are made before.
template <typename Push> nanoseconds feed(const Push& push) {
    std::vector<nanoseconds> bursts;
    std::vector<QelMidiMessage> messages(burst);
    const nanoseconds start = Platform::monotonicTime();
    for (std::uint64_t done = 0; done < events; done += burst) {
        for (std::uint64_t i = 0; i < burst; ++i) {
            messages[i] = messageOf(done + i);
        }
        const nanoseconds due = start + nanoseconds(done * 1'000'000'000 / eventsASecond);
        while (Platform::monotonicTime() < due) {
        }
        const nanoseconds begin = Platform::monotonicTime();
        for (const QelMidiMessage& message : messages) {
            push(message);
        }
        bursts.push_back(Platform::monotonicTime() - begin);
    }
    const auto median = bursts.begin() + static_cast<std::ptrdiff_t>(bursts.size() / 2);
    std::nth_element(bursts.begin(), median, bursts.end());
    return *median * static_cast<std::int64_t>(bursts.size());
}

void report(benchmark::State& state, nanoseconds spent) {
    state.SetIterationTime(std::chrono::duration<double>(spent).count());
    state.counters["ns_a_push"] = static_cast<double>(spent.count()) / static_cast<double>(events);
    state.SetItemsProcessed(static_cast<std::int64_t>(events));
}

// The yardstick: eight bytes pushed, popped by another thread that sleeps while there is nothing.
void barePush(benchmark::State& state) {
    for (auto _ : state) {
        Backend::SpscRing<PlayedMessage> ring(Backend::Recording::RecordQueue::defaultCapacity);
        std::atomic<bool> done = false;
        std::uint64_t popped = 0;
        std::uint64_t dropped = 0;
        Platform::Thread popper([&] {
            for (PlayedMessage message; !done.load() || !ring.isEmpty();) {
                if (ring.pop(message)) {
                    ++popped;
                } else {
                    Platform::sleepMilliseconds(10);
                }
            }
        });
        popper.resume();
        const nanoseconds spent =
            feed([&](const QelMidiMessage& message) { dropped += ring.push(PlayedMessage::of(message, 0)) ? 0 : 1; });
        done = true;
        popper.join();
        report(state, spent);
        state.counters["lost"] = static_cast<double>(events - popped);
    }
}
BENCHMARK(barePush)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

class TemporaryBuffers final {
public:
    TemporaryBuffers()
        : path_(std::filesystem::temp_directory_path() /
                ("tembrel-bench-" + std::to_string(Platform::monotonicTime().count()))) {}
    ~TemporaryBuffers() { std::filesystem::remove_all(path_); }
    TemporaryBuffers(const TemporaryBuffers&) = delete;
    TemporaryBuffers& operator=(const TemporaryBuffers&) = delete;
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// All events of the buffers, in order from number 0 on; the first that is not what was played ends the count.
std::uint64_t inOrder(const std::filesystem::path& folder, Fingerprint& fingerprint) {
    std::uint64_t count = 0;
    for (const auto& file : Backend::Recording::BufferFiles::list(folder)) {
        const std::string content = Platform::readWholeFile(file, 1'000'000'000).value();
        Backend::Recording::BufferReader reader(content);
        for (Backend::Recording::BufferEvent event; reader.next(event); ++count) {
            const std::uint32_t expected = messageOf(count).getMidiOutShortMsg();
            const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(event.message[i]); };
            const std::uint32_t found =
                byte(0) | static_cast<std::uint32_t>(byte(1)) << 8 | static_cast<std::uint32_t>(byte(2)) << 16;
            if (found != expected) {
                return count;
            }
            fingerprint.add(found);
        }
    }
    return count;
}

// Everything between the engine's call and the disk. `sizes`: 0, the default sizes, so that files rotate; 1, buffers
// that hold everything, which is read back. `slices`: 1, the clock is read for each message, as if each came alone.
void recorderPush(benchmark::State& state) {
    const bool keepsAll = state.range(0) != 0;
    const bool oneASlice = state.range(1) != 0;
    for (auto _ : state) {
        const TemporaryBuffers folder;
        BenchPlayer player;
        Backend::MidiEngine::MidiEngine engine(player);
        Backend::RegistrySettings settings;
        if (keepsAll) {
            settings.setMaxMidiBufferFileSize(200'000'000);
        }
        const auto surroundings = Backend::Surroundings::inFolder(folder.path());
        Backend::RecorderSection recorder(engine, settings, surroundings);
        recorder.start();
        Backend::MidiEngine::EngineTap& tap = recorder.tap();
        engine.playTimeSlice(Backend::engineTimeOrigin, Backend::engineTimeOrigin);
        std::uint64_t number = 0;
        const nanoseconds spent = feed([&](const QelMidiMessage& message) {
            if (oneASlice || number++ % burst == 0) {
                engine.playTimeSlice(Backend::engineTimeOrigin, Backend::engineTimeOrigin);
            }
            tap.passed(message, false);
        });
        const std::filesystem::path buffers = recorder.folder();
        recorder.end();
        report(state, spent);
        state.counters["lost"] = static_cast<double>(recorder.missed());
        if (keepsAll) {
            Fingerprint fingerprint;
            state.counters["read_back"] = static_cast<double>(inOrder(buffers, fingerprint));
            state.SetLabel(fingerprint.text());
        }
    }
}
BENCHMARK(recorderPush)
    ->ArgNames({"keeps_all", "one_a_slice"})
    ->Args({0, 0})
    ->Args({1, 0})
    ->Args({1, 1})
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
