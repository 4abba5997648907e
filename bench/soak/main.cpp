// soak MINUTES [SEED [DATA]]: plays that many minutes of random play through the real library, on virtual time, as
// fast as the machine can, and looks after each whether the laws of the house hold: nothing sounds once everything is
// let go and reset; a saved program loads to an equal program; memory stays flat. Exit code 1 at the first that does
// not. DATA: a folder of application data whose banks and presets join in.
#include "RandomPlay.h"
#include "SoundingSink.h"
#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "host/OfflinePlayer.h"
#include "host/Renderer.h"
#include "host/Session.h"
#include "midiengine/MidiEngine.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>

namespace {

using namespace Soak;

constexpr int inputs = 2;
constexpr int outputs = 3;
// What one minute may add to the memory of the process before it counts as a leak, beyond what the first ten need.
constexpr long allowedGrowth = 24 * 1024; // KiB

// Memory of this process in KiB; 0 where the system does not say.
long memoryInUse() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            long kib = 0;
            status >> kib;
            return kib;
        }
    }
    return 0;
}

template <typename Port> std::vector<Port> openPorts(int count) {
    std::vector<Port> ports;
    for (int i = 0; i < count; ++i) {
        Port port;
        port.name = "Port " + std::to_string(i + 1);
        port.system = "none";
        port.enabled = true;
        ports.push_back(std::move(port));
    }
    return ports;
}

// Functions that load the section presets that lie in the folder.
std::vector<std::string> presetFunctions(const std::filesystem::path& data) {
    const std::pair<const char*, const char*> folders[] = {
        {"Computer Input Presets", "LoadComputerInputPreset"}, {"Control Presets", "LoadControlPreset"},
        {"Joystick Presets", "LoadJoystickInputPreset"},       {"Layer Presets", "LoadLayerPreset"},
        {"Midi Input Presets", "LoadMidiInputPreset"},         {"Oscillator Presets", "LoadOscillatorPreset"}};
    std::vector<std::string> functions;
    for (const auto& [folder, function] : folders) {
        std::error_code failure;
        for (const auto& file : std::filesystem::directory_iterator(data / folder, failure)) {
            functions.push_back("<" + std::string(function) + " name=\"" + file.path().stem().string() + "\"/>");
        }
    }
    return functions;
}

// Minutes one after the other; between them it looks at the laws, while the renderer waits for the next event.
class SoakPerformance final : public Host::Performance {
public:
    SoakPerformance(std::uint64_t seed, int minutes, const std::filesystem::path& data, Backend::QelIF& qel,
                    SoundingSink& sink)
        : play_(seed, inputs, presetFunctions(data)), minutes_(minutes), saved_(data / "soak.prg"), qel_(qel),
          sink_(sink) {}

    bool next(Host::PerformanceEvent& event) override {
        if (next_ == events_.size()) {
            if (!endOfStage()) {
                return false;
            }
            next_ = 0;
        }
        event = events_[next_++];
        if (stage_ == Stage::played && next_ % 512 == 0) {
            unplug(static_cast<int>(next_ / 512) % outputs);
        }
        return true;
    }
    [[nodiscard]] const std::optional<std::string>& broken() const { return broken_; }

private:
    enum class Stage { begin, played, reset, saved };

    // What has been given so far has been played; gives what comes next, or false at the end.
    bool endOfStage() {
        const std::int32_t end = std::int32_t{1} + (minute_ % minutesAClock) * ticksPerMinute + ticksPerMinute - 1;
        switch (stage_) {
        case Stage::played: // all let go; drones, oscillators and controls may sound on
            events_ = {{end, Host::ExecuteFunction{"<ChangeMidiThru value='on'/>"}}, {end, Host::ResetAll{}}};
            stage_ = Stage::reset;
            return true;
        case Stage::reset:
            for (const int output : unplugged_) {
                sink_.forget(output);
            }
            unplugged_.clear();
            plug();
            if (sink_.sounding() > 0 || qel_.getMidiEngine().soundingNotes() > 0) {
                return fail("sounds after a reset:" + sink_.text());
            }
            qel_.getQelMessageManager().postCall([this](Backend::QelIF& qel) {
                before_ = qel.getProgramText();
                qel.saveToProgram(saved_.string(), {});
                qel.loadProgram(saved_.string());
                after_ = qel.getProgramText();
            });
            events_ = {{end, Host::SetTempo{120}}}; // the renderer waits for what was posted
            stage_ = Stage::saved;
            return true;
        case Stage::saved:
            if (before_ != after_) {
                std::ofstream("soak-before.prg") << before_;
                std::ofstream("soak-after.prg") << after_;
                return fail("a saved program loads to another; see soak-before.prg and soak-after.prg");
            }
            if (const long memory = memoryInUse(); minute_ == 10) {
                memoryAtTen_ = memory;
            } else if (minute_ > 10 && memory > memoryAtTen_ + allowedGrowth) {
                return fail("memory grew from " + std::to_string(memoryAtTen_) + " to " + std::to_string(memory) +
                            " KiB");
            }
            ++minute_;
            report();
            break;
        case Stage::begin:
            break;
        }
        if (minute_ == minutes_) {
            return false;
        }
        events_ = play_.minute((minute_ % minutesAClock) * ticksPerMinute + 1);
        stage_ = Stage::played;
        return true;
    }
    // An output vanishes until the end of the minute, with what sounds there.
    void unplug(int output) {
        unplugged_.push_back(output);
        plug();
    }
    void plug() {
        auto ports = openPorts<Backend::MidiOutputPort>(outputs);
        for (const int output : unplugged_) {
            ports[static_cast<std::size_t>(output)].enabled = false;
        }
        qel_.getQelMessageManager().postSetMidiOutputPorts(ports);
    }
    bool fail(std::string what) {
        broken_ = "minute " + std::to_string(minute_) + ": " + std::move(what);
        return false;
    }
    void report() const {
        if (minute_ % 60 == 0 || minute_ == minutes_) {
            std::cout << minute_ << " minutes, " << sink_.messages() << " messages out, " << memoryInUse() << " KiB"
                      << std::endl;
        }
    }

    // A rendering's clock holds 2,000,000,000 ticks: more than 500 hours.
    static constexpr int minutesAClock = Host::latestTick / ticksPerMinute - 1;

    RandomPlay play_;
    int minutes_;
    std::filesystem::path saved_;
    Backend::QelIF& qel_;
    SoundingSink& sink_;
    Stage stage_ = Stage::begin;
    int minute_ = 0;
    long memoryAtTen_ = 0;
    std::vector<int> unplugged_;
    std::vector<Host::PerformanceEvent> events_;
    std::size_t next_ = 0;
    std::string before_;
    std::string after_;
    std::optional<std::string> broken_;
};

int soak(int minutes, std::uint64_t seed, const std::filesystem::path& data) {
    std::filesystem::create_directories(data);
    SoundingSink sink;
    Host::OfflinePlayer player(sink);
    Host::SessionOptions options;
    options.data = data.string();
    options.defaultBank = true;
    Host::Session session(player, options);
    if (const auto started =
            session.start(openPorts<Backend::MidiInputPort>(inputs), openPorts<Backend::MidiOutputPort>(outputs));
        !started) {
        std::cerr << started.fault().text() << '\n';
        return 2;
    }
    SoakPerformance performance(seed, minutes, data, session.qel(), sink);
    Host::Renderer renderer(session.qel(), player);
    renderer.render(performance, 0);
    std::cout << "seed " << seed << ", fingerprint " << std::hex << sink.fingerprint() << std::dec << '\n';
    if (performance.broken()) {
        std::cerr << *performance.broken() << '\n';
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: soak MINUTES [SEED [DATA]]\n";
        return 2;
    }
    const std::filesystem::path data =
        argc > 3 ? std::filesystem::path(argv[3]) : std::filesystem::temp_directory_path() / "tembrel-soak";
    return soak(std::atoi(argv[1]), argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1, data);
}
