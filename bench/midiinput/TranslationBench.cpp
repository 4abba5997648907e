// What it costs to find and to apply the configuration of a message, and a flood of messages through the whole backend.
#include "CountedMemory.h"
#include "backend/QelFactory.h"
#include "core/MessageManagerMaster.h"
#include "core/QelMessageManager.h"
#include "core/Surroundings.h"
#include "host/EventSink.h"
#include "host/OfflinePlayer.h"
#include "host/Performance.h"
#include "host/Renderer.h"
#include "midiinput/MidiInputMessageManager.h"
#include "midiinput/MidiInputXml.h"
#include "midiinput/StartedNotes.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace Backend::MidiInput;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

MidiEventConfiguration configuration(int input, int channel, const std::string& event, const std::string& condition,
                                     const std::string& translation) {
    const std::string text = "<MidiInput><MidiEvent input=\"" + std::to_string(input) + "\" channel=\"" +
                             std::to_string(channel) + "\" midiEvent=\"" + event + "\"><Translation condition=\"" +
                             condition + "\">" + translation + "</Translation></MidiEvent></MidiInput>";
    MidiEventConfigurationMap map;
    readMidiInput(Platform::parseXml(text, "bench").value(), map);
    return map.begin()->second;
}

// Octaves for notes on inputs 1, 2, ... : none of them is for input 0, which has 64 of its own, half of its notes.
MidiEventConfigurationMap mapOf(int others) {
    MidiEventConfigurationMap map;
    const auto add = [&](int input, int channel, int note) {
        MidiEventConfiguration each = configuration(input, channel, "Note On," + std::to_string(note), "D2 gt 63",
                                                    "<MidiNoteOn d1=\"D1 +12\" d2=\"D2\"/>");
        map.store(each.event, std::move(each));
    };
    for (int note = 0; note < 128; note += 2) {
        add(0, 255, note);
    }
    for (int i = 0; i < others; ++i) {
        add(1 + i / 2048, i / 128 % 16, i % 128);
    }
    return map;
}

QelMidiMessage message(std::uint32_t i) {
    return {MessageType::noteOn,
            static_cast<std::int8_t>(i * 37 % 128),
            static_cast<std::int8_t>(1 + i * 11 % 127),
            static_cast<std::int8_t>(i % 16),
            -1,
            -1,
            0,
            Backend::noTicks};
}

// Look-up, condition, the message that is made, and the memory of what a key has started. Half of the messages are
// configured, half of the conditions hold.
void translate(benchmark::State& state) {
    const MidiEventConfigurationMap map = mapOf(static_cast<int>(state.range(0)));
    std::vector<QelMidiMessage> messages;
    for (std::uint32_t i = 0; i < 4096; ++i) {
        messages.push_back(message(i));
    }
    std::uint64_t sum = 0;
    StartedNotes started;
    const auto handle = [&](const QelMidiMessage& incoming) {
        const LookUp found = map.lookUp(incoming);
        started.beginPress(incoming);
        if (found.configuration == nullptr) {
            return;
        }
        for (const auto& translation : found.configuration->translations) {
            if (translation->getCondition().holdsFor(incoming.getMidiMessage())) {
                const auto message = translation->getMidiMessage(incoming);
                started.add(*message);
                sum = sum * 31 + message->getMidiOutShortMsg();
            }
        }
    };
    for (const QelMidiMessage& each : messages) {
        handle(each);
    }
    state.SetLabel(std::to_string(sum));
    std::size_t next = 0;
    const std::uint64_t before = allocationsSoFar();
    for (auto _ : state) {
        handle(messages[next++ % messages.size()]);
    }
    benchmark::DoNotOptimize(sum);
    state.counters["allocations"] = static_cast<double>(allocationsSoFar() - before);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(translate)->ArgName("others")->Arg(0)->Arg(64)->Arg(1024)->Arg(16384);

// 50,000 messages a second for a minute: keys that are translated, keys of which only the press is, controllers that
// are not configured. One message leaves for each that arrives.
class Flood final : public Host::Performance {
public:
    static constexpr std::uint32_t messages = 3'000'000;
    static constexpr std::uint32_t seconds = 60;
    static constexpr std::uint32_t ticksASecond = 960; // at 120 beats a minute

    bool next(Host::PerformanceEvent& event) override {
        if (number_ == messages) {
            return false;
        }
        const std::uint32_t key = number_ / 3 % 64;
        const std::uint8_t velocity = static_cast<std::uint8_t>(1 + key);
        constexpr std::uint8_t statuses[] = {0x90, 0xB0, 0x80};
        event.tick = static_cast<std::int32_t>(std::uint64_t{number_} * seconds * ticksASecond / messages);
        event.what = Host::MidiArrives{0, statuses[number_ % 3], static_cast<std::uint8_t>(key), velocity};
        ++number_;
        return true;
    }

private:
    std::uint32_t number_ = 0;
};

long residentPages() {
    std::ifstream statistics("/proc/self/statm"); // where there is no such file: 0
    long total = 0;
    long resident = 0;
    statistics >> total >> resident;
    return resident;
}

class CountingSink final : public Host::EventSink {
public:
    void play(std::int32_t tick, const QelMidiMessage& message) override {
        ++count;
        fingerprint = (fingerprint ^ message.getMidiOutShortMsg() ^ static_cast<std::uint32_t>(tick)) * 0x100000001B3U;
        if (count == Flood::messages / 10) {
            pagesAtFirst = residentPages();
        }
    }
    void setTempo(std::int32_t, int) override {}
    [[nodiscard]] bool isGood() const override { return true; }
    [[nodiscard]] Platform::Outcome finish(std::int32_t) override { return Platform::success(); }

    std::uint64_t count = 0;
    std::uint64_t fingerprint = 0xCBF29CE484222325U;
    long pagesAtFirst = 0; // when a tenth has been played
};

void flood(benchmark::State& state) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tembrel-bench-flood";
    for (auto _ : state) {
        CountingSink sink;
        Host::OfflinePlayer player(sink);
        const auto qel =
            Backend::QelFactory::createQel("Bench", player, false, Backend::Surroundings::inFolder(folder));
        Backend::QelMessageManager& backend = qel->getQelMessageManager();
        std::vector<Backend::MidiInputPort> inputs(1);
        std::vector<Backend::MidiOutputPort> outputs(1);
        inputs[0].enabled = outputs[0].enabled = true;
        backend.sendInitialize();
        backend.sendSetMidiInputPorts(inputs);
        backend.sendSetMidiOutputPorts(outputs);
        backend.sendEndInitialize();
        std::vector<MidiEventConfiguration> list;
        for (int key = 0; key < 64; ++key) {
            list.push_back(configuration(255, 255, "Note On," + std::to_string(key), "D2 gt 0",
                                         "<MidiNoteOn d1=\"D1 +32\" d2=\"D2\"/>"));
            if (key % 2 == 0) {
                list.push_back(configuration(255, 255, "Note Off," + std::to_string(key), "Off",
                                             "<MidiNoteOff d1=\"D1 +32\" d2=\"D2\"/>"));
            }
        }
        qel->getMidiInputMessageManager().postPut(list);
        Flood performance;
        Host::Renderer(*qel, player, static_cast<std::size_t>(state.range(0))).render(performance, 0);
        state.SetLabel(std::to_string(sink.fingerprint));
        state.counters["lost"] = static_cast<double>(Flood::messages) - static_cast<double>(sink.count);
        state.counters["pages"] = static_cast<double>(residentPages() - sink.pagesAtFirst);
        backend.sendEnd();
        qel->getMessageManagerMaster().stop();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * Flood::messages);
    std::filesystem::remove_all(folder);
}
BENCHMARK(flood)->ArgName("batch")->Arg(4096)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
