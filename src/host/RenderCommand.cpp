#include "host/RenderCommand.h"

#include "host/EventListWriter.h"
#include "host/OfflinePlayer.h"
#include "host/PerformanceScript.h"
#include "host/Renderer.h"
#include "host/SessionFlags.h"
#include "host/SinkList.h"
#include "host/SmfReader.h"
#include "host/SmfWriter.h"
#include "platform/Clocks.h"
#include "platform/SafeFiles.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace Host {

using Platform::Outcome;
using Platform::Result;

namespace {

constexpr int mostPorts = 128; // a message names its port in seven bits
constexpr std::size_t largestInput = std::size_t{1} << 30;

// "In 1", "In 2", ...: all open.
template <typename Port> std::vector<Port> openPorts(const std::string& name, int count) {
    std::vector<Port> ports;
    for (int number = 1; number <= count; ++number) {
        Port port;
        port.name = name + " " + std::to_string(number);
        port.system = "none";
        port.enabled = true;
        ports.push_back(std::move(port));
    }
    return ports;
}

void printStatistics(std::uint64_t in, std::uint64_t out, std::chrono::nanoseconds time) {
    const double seconds = std::chrono::duration<double>(time).count();
    const double perSecond = seconds > 0 ? static_cast<double>(in) / seconds : 0;
    std::fprintf(stderr, "%llu events in, %llu events out, %.3f s, %.0f events per second\n",
                 static_cast<unsigned long long>(in), static_cast<unsigned long long>(out), seconds, perSecond);
}

} // namespace

RenderCommand::RenderCommand(CLI::App& commandLine)
    : verb_(commandLine.add_subcommand("render", "Play a MIDI file or a performance script offline")) {
    verb_->add_option("INPUT", input_, "A Standard MIDI File or a performance script, told apart by content")
        ->required();
    addSessionOptions(*verb_, session_);
    verb_->add_option("--events", events_, "Write every message played as a line of text; - is standard output")
        ->type_name("FILE");
    verb_->add_option("-o,--output", output_, "Write a MIDI file, one track an output")->type_name("OUTPUT.mid");
    verb_->add_option("--inputs", inputs_, "Number of MIDI inputs")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(1, mostPorts));
    verb_->add_option("--outputs", outputs_, "Number of MIDI outputs")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(1, mostPorts));
    verb_->add_option("--tail", tail_, "How long to go on at most after the last line, in ticks (480 a quarter note)")
        ->type_name("TICKS")
        ->capture_default_str()
        ->check(CLI::Range(0, latestTick));
    verb_->add_flag("--stats", statistics_, "Say on standard error how much was played and how fast");
}

int RenderCommand::run() {
    if (session_.slot && !session_.bank) {
        std::cerr << "tembrel render: --slot names a program of the bank that --bank gives\n";
        return 2;
    }
    if (output_ == "-") {
        std::cerr << "tembrel render: a MIDI file cannot be written to standard output\n";
        return 2;
    }
    if (const Outcome rendered = render(); !rendered) {
        std::cerr << rendered.fault().text() << '\n';
        return 1;
    }
    return 0;
}

Outcome RenderCommand::render() {
    auto performance = openInput();
    if (!performance) {
        return performance.fault();
    }
    SinkList sinks;
    OfflinePlayer player(sinks);
    Session session(player, session_);
    if (const Outcome started = session.start(openPorts<Backend::MidiInputPort>("In", inputs_),
                                              openPorts<Backend::MidiOutputPort>("Out", outputs_));
        !started) {
        return started;
    }
    if (auto opened = openSinks()) {
        sinks.add(std::move(opened.value()));
    } else {
        return opened.fault();
    }
    Renderer renderer(session.qel(), player);
    const auto begin = Platform::monotonicTime();
    const std::int32_t end = renderer.render(*performance.value(), tail_);
    const auto time = Platform::monotonicTime() - begin;
    if (const Outcome finished = sinks.finish(end); !finished) {
        return finished;
    }
    for (const Platform::Fault& fault : session.takeFaults()) {
        std::cerr << fault.text() << '\n'; // a preset that a function asked for: said, and rendered without
    }
    if (statistics_) {
        printStatistics(renderer.incomingMessages(), player.playedMessages(), time);
    }
    return Platform::success();
}

Result<std::unique_ptr<Performance>> RenderCommand::openInput() const {
    std::error_code ignored;
    if (std::filesystem::is_directory(input_, ignored)) {
        return Platform::Fault{input_, 0, "is a folder"};
    }
    auto content = Platform::readWholeFile(input_, largestInput, Platform::Waiting::endlessly);
    if (!content) {
        return Platform::Fault{input_, 0, "cannot be read: " + content.fault().reason};
    }
    if (SmfReader::recognises(content.value())) {
        auto reader = SmfReader::open(std::move(content.value()), input_, inputs_);
        return reader ? Result<std::unique_ptr<Performance>>(std::move(reader.value())) : reader.fault();
    }
    auto script = PerformanceScript::open(std::move(content.value()), input_, inputs_);
    return script ? Result<std::unique_ptr<Performance>>(std::move(script.value())) : script.fault();
}

Result<std::vector<std::unique_ptr<EventSink>>> RenderCommand::openSinks() const {
    std::vector<std::unique_ptr<EventSink>> sinks;
    if (events_) {
        auto list = std::make_unique<EventListWriter>(*events_);
        if (const Outcome opened = list->open(); !opened) {
            return opened.fault();
        }
        sinks.push_back(std::move(list));
    }
    if (output_) {
        std::vector<std::string> names;
        for (const Backend::MidiOutputPort& port : openPorts<Backend::MidiOutputPort>("Out", outputs_)) {
            names.push_back(port.name);
        }
        auto file = std::make_unique<SmfWriter>(*output_, names);
        if (const Outcome opened = file->open(); !opened) {
            return opened.fault();
        }
        sinks.push_back(std::move(file));
    }
    return sinks;
}

} // namespace Host
