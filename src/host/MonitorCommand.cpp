#include "host/MonitorCommand.h"

#include "host/live/CountsReport.h"
#include "host/live/MessageText.h"
#include "host/live/MidiSystemFlag.h"
#include "host/live/StopSignals.h"
#include "platform/Clocks.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <mutex>

namespace Host {

namespace {

class Printer final : public MidiSystemListener {
public:
    explicit Printer(const MidiSystem& system) : system_(system), inputs_(system.inputs()) {}

    void received(std::vector<Backend::MidiEngine::QelMidiMessage> messages, const std::function<void()>&) override {
        const std::chrono::duration<double> time = Platform::monotonicTime() - start_;
        const std::lock_guard lock(mutex_); // inputs may have a thread each
        for (const auto& message : messages) {
            const auto place = static_cast<std::size_t>(message.getInput());
            const std::string name = place < inputs_.size() ? Platform::withoutControls(inputs_[place].name) : "?";
            std::printf("%.6f %s: %s\n", time.count(), name.c_str(), textOf(message.getMidiMessage()).c_str());
        }
        if (std::fflush(stdout) != 0) {
            broken_ = true;
            ended.signal();
        }
    }
    void portsChanged() override {
        const std::lock_guard lock(mutex_);
        inputs_ = system_.inputs();
    }
    [[nodiscard]] bool isBroken() const {
        const std::lock_guard lock(mutex_);
        return broken_;
    }

    Platform::AutoResetEvent ended;

private:
    const MidiSystem& system_;
    const std::chrono::nanoseconds start_ = Platform::monotonicTime();
    mutable std::mutex mutex_;
    std::vector<Backend::MidiInputPort> inputs_;
    bool broken_ = false;
};

} // namespace

MonitorCommand::MonitorCommand(CLI::App& commandLine)
    : verb_(commandLine.add_subcommand("monitor", "Print the MIDI messages that arrive")) {
    verb_->add_option("PORT", ports_, "The inputs whose names contain this; all without it");
    addMidiSystemOption(*verb_, midi_);
}

int MonitorCommand::run() {
    PortWishes wishes;
    wishes.clientName = "Tembrel monitor";
    wishes.inputs = ports_;
    wishes.everyInput = ports_.empty();
    wishes.anyOutput = false;
    auto found = findMidiSystem(midi_, wishes);
    if (!found) {
        std::cerr << found.fault().text() << '\n';
        return 1;
    }
    if (found.value().isNone) {
        std::cerr << "there is no MIDI system to listen to\n";
        return 1;
    }
    MidiSystem& system = *found.value().system;
    Printer printer(system);
    const StopSignals signals(printer.ended);
    std::cerr << found.value().remark << std::endl;
    system.start(printer);
    const std::vector<Backend::MidiInputPort> inputs = system.inputs();
    if (std::none_of(inputs.begin(), inputs.end(), [](const auto& input) { return input.enabled; })) {
        std::cerr << "no input to listen to is there yet" << std::endl;
    }
    while (!signals.wasAsked() && !printer.isBroken()) {
        printer.ended.wait();
    }
    system.stop();
    reportCounts(system.counts());
    return printer.isBroken() ? 1 : 0;
}

} // namespace Host
