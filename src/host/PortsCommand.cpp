#include "host/PortsCommand.h"

#include "host/live/MidiSystems.h"
#include "host/live/StopSignals.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Host {

namespace {

using Systems = std::vector<std::unique_ptr<MidiSystem>>;
using Lines = std::multiset<std::string>;

template <typename Port> void addLines(Lines& lines, const std::vector<Port>& ports, const char* direction) {
    for (const Port& port : ports) {
        if (port.present) {
            lines.insert(std::string(direction) + ' ' + port.system + ' ' + Platform::withoutControls(port.name));
        }
    }
}

Lines linesOf(const Systems& systems) {
    Lines lines;
    for (const auto& system : systems) {
        addLines(lines, system->inputs(), "input");
        addLines(lines, system->outputs(), "output");
    }
    return lines;
}

void printMissing(const Lines& in, const Lines& from, const char* sign) {
    std::vector<std::string> missing;
    std::set_difference(from.begin(), from.end(), in.begin(), in.end(), std::back_inserter(missing));
    for (const std::string& line : missing) {
        std::cout << sign << ' ' << line << '\n';
    }
}

class Wake final : public MidiSystemListener {
public:
    void received(std::vector<Backend::MidiEngine::QelMidiMessage>, const std::function<void()>&) override {}
    void portsChanged() override { event.signal(); }

    Platform::AutoResetEvent event;
};

} // namespace

PortsCommand::PortsCommand(CLI::App& commandLine)
    : verb_(commandLine.add_subcommand("ports", "List the MIDI inputs and outputs of the machine")) {
    verb_->add_flag("--watch", watch_, "Go on, and say what comes and goes");
}

int PortsCommand::run() {
    Wake wake;
    const StopSignals signals(wake.event);
    PortWishes wishes;
    wishes.clientName = "Tembrel ports";
    wishes.onlyList = true;
    const Systems systems = findMidiSystems(wishes);
    Lines shown = linesOf(systems);
    for (const std::string& line : shown) {
        std::cout << line << '\n';
    }
    std::cout << std::flush;
    if (shown.empty()) {
        std::cerr << (systems.empty() ? "there is no MIDI system" : "there are no MIDI ports") << '\n';
    }
    if (!watch_) {
        return std::cout ? 0 : 1;
    }
    for (const auto& system : systems) {
        system->start(wake);
    }
    while (!signals.wasAsked() && std::cout) {
        Lines now = linesOf(systems);
        printMissing(now, shown, "-");
        printMissing(shown, now, "+");
        std::cout << std::flush;
        shown = std::move(now);
        wake.event.wait();
    }
    return std::cout ? 0 : 1;
}

} // namespace Host
