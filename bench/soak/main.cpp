// soak MINUTES [SEED [DATA]]: plays that many minutes of random play through the real library, on virtual time, as
// fast as the machine can: keys, controls, axes, buttons, MIDI with a clock that hesitates, functions, translations,
// programs, presets, edits of layers, zones and oscillators, ports, tempo, resets, takes and saves. After each minute
// it looks whether the laws of the house hold: nothing sounds once everything is let go and reset, each Note On that
// went out having had its Note Off; nothing waits in the engine any more; each file that was saved passes `check`,
// programs, also through their bank, load as they were saved; memory stays flat. Exit code 1 at the first that does
// not. DATA: a folder of application data whose banks and presets join in; a folder that is not there gets the
// factory's.
#include "SoakPerformance.h"
#include "host/OfflinePlayer.h"
#include "host/Renderer.h"
#include "host/Session.h"

#include <cstdlib>
#include <iostream>

namespace {

using namespace Soak;

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

int soak(const SoakSetting& setting) {
    std::filesystem::create_directories(setting.data);
    SoundingSink sink;
    Host::OfflinePlayer player(sink);
    Host::SessionOptions options;
    options.data = setting.data.string();
    options.defaultBank = true;
    options.records = true;
    Host::Session session(player, options);
    if (const auto started = session.start(openPorts<Backend::MidiInputPort>(setting.inputs),
                                           openPorts<Backend::MidiOutputPort>(setting.outputs));
        !started) {
        std::cerr << started.fault().text() << '\n';
        return 2;
    }
    SoakPerformance performance(setting, session.qel(), sink);
    Host::Renderer renderer(session.qel(), player);
    renderer.render(performance, 0);
    std::cout << "seed " << setting.seed << ", fingerprint " << std::hex << sink.fingerprint() << std::dec << '\n';
    for (const Platform::Fault& fault : session.takeFaults()) {
        std::cerr << fault.text() << '\n';
    }
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
    SoakSetting setting;
    setting.minutes = std::atoi(argv[1]);
    setting.seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    setting.data = argc > 3 ? std::filesystem::path(argv[3]) : std::filesystem::temp_directory_path() / "tembrel-soak";
    return soak(setting);
}
