// Programs and banks of 128 slots: loading, stepping, saving a slot. In memory (/dev/shm), so that the disk's own flush
// is not measured, and on the disk beside it.
#include "BenchPlayer.h"
#include "backend/QelFactory.h"
#include "core/Barrier.h"
#include "core/MessageManagerMaster.h"
#include "core/QelMessageManager.h"
#include "midiengine/MidiEngine.h"
#include "platform/PathText.h"
#include "values/SelectType.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// A backend in a folder of its own, and the clock that its resets wait for. Operations are called while its own thread
// has nothing to do, so that no hop between threads is measured.
class Rig final {
public:
    explicit Rig(const fs::path& parent) : folder_(parent / ("tembrel-bench-" + std::to_string(getpid()))) {
        fs::create_directories(folder_);
        Backend::Surroundings surroundings = Backend::Surroundings::inFolder(folder_);
        surroundings.reportFault = [](const Platform::Fault&) { std::abort(); };
        qel = Backend::QelFactory::createQel("Bench", player_, false, surroundings);
        clock_ = std::thread([this] {
            while (!ends_) {
                qel->getMidiEngine().playTimeSlice(Backend::engineTimeOrigin, Backend::engineTimeOrigin);
                std::this_thread::sleep_for(std::chrono::microseconds(20));
            }
        });
        qel->getQelMessageManager().sendInitialize();
        qel->getQelMessageManager().sendEndInitialize();
    }
    ~Rig() {
        qel->getQelMessageManager().sendEnd();
        ends_ = true;
        clock_.join();
        qel->getMessageManagerMaster().stop();
        qel.reset();
        fs::remove_all(folder_);
    }
    Rig(const Rig&) = delete;
    Rig& operator=(const Rig&) = delete;

    // The built-in program with all that is in it: 75 keys, 13 controls.
    [[nodiscard]] std::string wholeProgram() {
        const std::string text = qel->getProgramText();
        const std::size_t begin = text.find("<Program ");
        return text.substr(begin, text.rfind("</QelProgramFile>") - begin);
    }
    [[nodiscard]] std::string writeBank(int size) {
        const fs::path file = folder_ / "bench.bnk";
        std::ofstream out(file, std::ios::binary);
        out << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<Bank>\n";
        const std::string program = wholeProgram();
        for (int slot = 0; slot < size; ++slot) {
            out << program;
        }
        out << "</Bank>\n";
        return Platform::textOf(file);
    }
    // Lets the engine take in what was posted.
    void settle() {
        Backend::Barrier barrier;
        if (qel->getQelMessageManager().postBarrier(barrier)) {
            barrier.wait();
        }
    }

    std::unique_ptr<Backend::QelIF> qel;

private:
    BenchPlayer player_;
    fs::path folder_;
    std::atomic<bool> ends_ = false;
    std::thread clock_;
};

constexpr int bankSize = 128;

void loadProgram(benchmark::State& state) {
    Rig rig("/dev/shm");
    const std::string text = rig.qel->getProgramText();
    for (auto _ : state) {
        rig.qel->setProgramText(text);
        state.PauseTiming();
        rig.settle();
        state.ResumeTiming();
    }
    state.SetLabel(std::to_string(text.size()) + " bytes");
}
BENCHMARK(loadProgram)->Unit(benchmark::kMicrosecond);

void changeProgram(benchmark::State& state) {
    Rig rig("/dev/shm");
    rig.qel->loadBank(rig.writeBank(bankSize));
    for (auto _ : state) {
        rig.qel->changeProgram(SelectType(SelectType::Kind::up));
        state.PauseTiming();
        rig.settle();
        state.ResumeTiming();
    }
}
BENCHMARK(changeProgram)->Unit(benchmark::kMicrosecond);

void loadBank(benchmark::State& state) {
    Rig rig("/dev/shm");
    const std::string bank = rig.writeBank(bankSize);
    for (auto _ : state) {
        rig.qel->loadBank(bank);
        state.PauseTiming();
        rig.settle();
        state.ResumeTiming();
    }
    state.SetLabel(std::to_string(fs::file_size(bank)) + " bytes");
}
BENCHMARK(loadBank)->Unit(benchmark::kMillisecond);

void saveSlot(benchmark::State& state, const char* parent) {
    Rig rig(parent);
    const std::string bank = rig.writeBank(bankSize);
    rig.qel->loadBank(bank);
    std::ifstream before(bank);
    const std::string text{std::istreambuf_iterator<char>(before), {}};
    for (auto _ : state) {
        rig.qel->saveToCurrentBank(bankSize / 2, nullptr);
    }
    std::ifstream after(bank);
    const std::string saved{std::istreambuf_iterator<char>(after), {}};
    state.SetLabel(saved == text ? "the same bank" : "ANOTHER BANK");
}
BENCHMARK_CAPTURE(saveSlot, memory, "/dev/shm")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(saveSlot, disk, "/var/tmp")->Unit(benchmark::kMillisecond);

} // namespace
