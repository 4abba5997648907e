#include "host/RunCommand.h"

#include "generators/recording/RetroRecord.h"
#include "host/SessionFlags.h"
#include "host/TakeServer.h"
#include "host/live/CountsReport.h"
#include "host/live/EventPrinters.h"
#include "host/live/LivePlayer.h"
#include "host/live/LiveScript.h"
#include "host/live/MidiSystemFlag.h"
#include "host/live/StatusLine.h"
#include "host/live/StopSignals.h"
#include "host/live/Terminal.h"
#include "host/live/TerminalKeyboard.h"
#include "host/window/ProgramWindow.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <memory>
#include <vector>

namespace Host {

using Platform::Fault;
using Platform::Outcome;

// What ends a run, and what wakes whoever waits for that.
struct RunEnding {
    const StopSignals& signals;
    Platform::AutoResetEvent& wake;
};

namespace {

constexpr std::chrono::nanoseconds betweenLooks = StatusLine::interval;
constexpr int looksAProbe = 5; // of the window: twice a second

void say(const std::string& text) {
    std::cerr << text << '\n';
}

// Waits until the signals, the script or a broken output end the run.
Outcome waitForEnd(const RunEnding& ending, const LiveScript* script, const EventPrinters& printers, Session& session,
                   StatusLine* status) {
    for (;;) {
        std::vector<std::string> news;
        for (const Fault& fault : session.takeFaults()) { // of a file that a function asked for: it is played without
            news.push_back(fault.text());
        }
        std::ranges::move(session.takeRemarks(), std::back_inserter(news));
        if (status != nullptr && !news.empty()) {
            status->clear();
        }
        std::for_each(news.begin(), news.end(), say);
        if (ending.signals.wasAsked()) {
            return Platform::success();
        }
        if (script != nullptr) {
            if (auto outcome = script->outcome()) {
                return *outcome;
            }
        }
        if (Outcome state = printers.state(); !state) {
            return state;
        }
        if (status != nullptr) {
            status->update(printers.written());
        }
        static_cast<void>(ending.wake.waitFor(betweenLooks));
    }
}

// Plays what the keyboard says, where standard input is a terminal, else what the script there says.
Outcome playInTerminal(LivePlayer& player, Session& session, EventPrinters& printers, const RunEnding& ending) {
    std::unique_ptr<StatusLine> status;
    if (standardErrorIsTerminal()) {
        status = std::make_unique<StatusLine>(stderr, session.qel(), player);
    }
    if (!standardInputIsTerminal()) {
        LiveScript script(stdin, player, session.qel(), ending.wake);
        printers.setStart(script.start());
        return waitForEnd(ending, &script, printers, session, status.get());
    }
    TerminalKeyboard keyboard(session.qel(), player);
    if (!keyboard.state()) {
        say(keyboard.state().fault().text());
    }
    return waitForEnd(ending, nullptr, printers, session, status.get());
}

WindowNews newsOf(LivePlayer& player, Session& session) {
    WindowNews news;
    for (const Fault& fault : session.takeFaults()) {
        news.faults.push_back(fault.text());
    }
    news.status.system = player.system().name();
    news.status.tempo = static_cast<int>(player.tempo().beatsPerMinute() + 0.5);
    news.status.heldNotes = player.heldNotes();
    const RoadMeter::Reading road = player.road();
    news.status.latencyMs = road.latencyMs;
    news.status.jitterMs = road.jitterMs;
    return news;
}

} // namespace

RunCommand::RunCommand(CLI::App& commandLine)
    : verb_(commandLine.add_subcommand("run", "Start the controller and play live")) {
    verb_->add_flag("--headless", headless_, "Without a window, in the terminal");
    addSessionOptions(*verb_, session_);
    session_.joysticks = true;
    session_.defaultBank = true;
    session_.records = true;
    verb_->add_option("--events", events_, "Write every message played as a line of text; - is standard output")
        ->type_name("FILE");
    addMidiSystemOption(*verb_, midi_);
    verb_->add_option("--in", wishes_.inputs, "Open the inputs whose names contain this")->type_name("NAME");
    verb_->add_option("--out", wishes_.outputs, "Open the outputs whose names contain this")->type_name("NAME");
    verb_
        ->add_option("--tempo-source", tempoSource_,
                     "What sets the tempo, whatever programs say: internal, the MIDI clock of the input whose name "
                     "contains this, or transport for JACK's")
        ->type_name("SOURCE");
    verb_->add_option("--clock-out", clockOutputs_, "Send MIDI clock on the outputs whose names contain this")
        ->type_name("NAME");
    verb_->add_flag("--explain", explain_, "Print what becomes of each incoming message, and why");
    verb_->add_flag("--connect", wishes_.connect, "Connect to the first synthesizer found");
}

int RunCommand::run() {
    if (session_.slot && !session_.bank) {
        std::cerr << "tembrel run: --slot names a program of the bank that --bank gives\n";
        return 2;
    }
    if (const Outcome played = play(); !played) {
        std::cerr << played.fault().text() << '\n';
        return 1;
    }
    return 0;
}

Platform::Result<std::uint8_t> RunCommand::tempoSourceIn(const MidiSystem& system) const {
    if (*tempoSource_ == "internal") {
        return TempoSync::noSource;
    }
    if (*tempoSource_ == "transport") {
        if (system.name() != "JACK") {
            return Fault{{}, 0, "there is no transport to follow: it is JACK's"};
        }
        return TempoSync::jackTransport;
    }
    const std::vector<Backend::MidiInputPort> inputs = system.inputs();
    for (std::size_t i = 0; i < inputs.size() && i + 1 < TempoSync::jackTransport; ++i) {
        if (isNamed(inputs[i].name, {*tempoSource_})) {
            return static_cast<std::uint8_t>(i + 1);
        }
    }
    return Fault{{}, 0, "there is no MIDI input \"" + *tempoSource_ + "\" to follow"};
}

void RunCommand::openTempoSource(MidiSystem& system) const {
    const auto source = tempoSource_ ? tempoSourceIn(system) : TempoSync::noSource;
    if (source && source.value() != TempoSync::noSource && source.value() != TempoSync::jackTransport) {
        system.enableInput(source.value() - 1, true);
    }
}

Outcome RunCommand::setTime(LivePlayer& player) const {
    if (tempoSource_) {
        const auto source = tempoSourceIn(player.system());
        if (!source) {
            return source.fault();
        }
        player.fixTempoSource(source.value());
    }
    if (!clockOutputs_.empty()) {
        player.sendClockTo(clockOutputs_);
    }
    return Platform::success();
}

Outcome RunCommand::play() {
    auto found = findMidiSystem(midi_, wishes_);
    if (!found) {
        return found.fault();
    }
    EventPrinters printers;
    for (const auto& target : {found.value().isNone ? std::optional<std::string>("-") : std::nullopt, events_}) {
        if (const Outcome added = target ? printers.add(*target) : Platform::success(); !added) {
            return added;
        }
    }
    Platform::AutoResetEvent wake;
    const StopSignals signals(wake);
    LivePlayer player(std::move(found.value().system));
    printers.attachTo(player);
    if (const Outcome set = setTime(player); !set) {
        return set;
    }
    return perform(player, printers, {signals, wake}, found.value().remark);
}

Outcome RunCommand::perform(LivePlayer& player, EventPrinters& printers, const RunEnding& ending,
                            const std::string& remark) {
    if (explain_) {
        session_.explainInput = printers.explanations(player);
    }
    std::unique_ptr<ProgramWindow> window; // outlives the session, whose user interface it shows
    Session session(player, session_);
    if (!headless_) {
        window = makeProgramWindow([&, looks = 0]() mutable {
            if (looks++ % looksAProbe == 0) {
                player.sendProbe();
            }
            WindowNews news = newsOf(player, session);
            news.end = ending.signals.wasAsked() || !printers.state();
            return news;
        });
    }
    if (const Outcome started = session.start(player.system().inputs(), player.system().outputs()); !started) {
        return started;
    }
    player.start(session.qel());
    openTempoSource(player.system());
    say(remark);
    std::optional<TakeServer> takes(session.qel().getRetroRecord());
    if (const Outcome served = takes->state(); !served) {
        say("takes can be saved when the program has ended only: " + served.fault().text());
    }
    Outcome ended = Platform::success();
    if (window) {
        window->run(session.qel());
        ended = printers.state();
    } else {
        ended = playInTerminal(player, session, printers, ending);
    }
    player.releaseAll();
    takes.reset();
    session.end();
    player.stop();
    for (const std::string& last : session.takeRemarks()) {
        say(last);
    }
    if (const std::uint64_t missed = session.qel().getRetroRecord().missed(); missed > 0) {
        say(std::to_string(missed) + " messages are missing in the record");
    }
    printers.finish();
    reportCounts(player.system().counts());
    return ended;
}

} // namespace Host
