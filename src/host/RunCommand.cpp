#include "host/RunCommand.h"

#include "generators/recording/RetroRecord.h"
#include "host/SessionFlags.h"
#include "host/TakeServer.h"
#include "host/live/CountsReport.h"
#include "host/live/EventPrinter.h"
#include "host/live/LivePlayer.h"
#include "host/live/LiveScript.h"
#include "host/live/MidiSystemFlag.h"
#include "host/live/StatusLine.h"
#include "host/live/StepsText.h"
#include "host/live/StopSignals.h"
#include "host/live/Terminal.h"
#include "host/live/TerminalKeyboard.h"
#include "host/live/TextPrinter.h"
#include "host/window/ProgramWindow.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iostream>
#include <memory>
#include <vector>

namespace Host {

using namespace std::chrono_literals;
using Platform::Fault;
using Platform::Outcome;

namespace {

constexpr std::chrono::nanoseconds betweenLooks = StatusLine::interval;
constexpr int looksAProbe = 5; // of the window: twice a second

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, FileCloser>;

// Where played events are printed to; several targets that are the same are one.
class Printers final {
public:
    // `target` is a file, or "-" for standard output.
    [[nodiscard]] Outcome add(const std::string& target) {
        if (target == "-") {
            if (!printsToOutput_) {
                printsToOutput_ = true;
                printers_.push_back(std::make_unique<EventPrinter>(stdout, eraserBesideStatus()));
            }
            return Platform::success();
        }
        files_.emplace_back(std::fopen(target.c_str(), "w"));
        if (!files_.back()) {
            return Fault{target, 0, std::string("cannot be written: ") + std::strerror(errno)};
        }
        printers_.push_back(std::make_unique<EventPrinter>(files_.back().get()));
        return Platform::success();
    }
    void attachTo(LivePlayer& player) {
        for (const auto& printer : printers_) {
            player.printTo(*printer);
        }
    }
    void setStart(Backend::Ticks start) {
        for (const auto& printer : printers_) {
            printer->setStart(start);
        }
    }
    [[nodiscard]] Outcome state() const {
        for (const auto& printer : printers_) {
            if (!printer->isGood()) {
                return Fault{{}, 0, "the events cannot be written any more"};
            }
        }
        return Platform::success();
    }
    // How many times something was written.
    [[nodiscard]] std::uint64_t written() const {
        std::uint64_t written = explanation_ ? explanation_->written() : 0;
        for (const auto& printer : printers_) {
            written += printer->written();
        }
        return written;
    }
    // Prints what becomes of the messages that arrive, to standard output.
    [[nodiscard]] std::function<void(const Backend::MidiInput::InputSteps&)> explanations(LivePlayer& player) {
        explanation_ = std::make_unique<TextPrinter>(stdout, eraserBesideStatus());
        return [this, &player](const Backend::MidiInput::InputSteps& steps) {
            const std::vector<Backend::MidiInputPort> inputs = player.system().inputs();
            const auto input = static_cast<std::size_t>(steps.incoming.getInput());
            explanation_->print(textOf(steps, input < inputs.size() ? inputs[input].name : "?"));
        };
    }
    // What is still to be written is written; says what was lost.
    void finish() {
        std::uint64_t dropped = explanation_ ? explanation_->dropped() : 0;
        explanation_.reset();
        for (const auto& printer : printers_) {
            dropped += printer->dropped();
        }
        printers_.clear();
        if (dropped > 0) {
            std::cerr << dropped << " events were not printed: the reader was too slow\n";
        }
    }

private:
    // What makes room for a line where the status line stands.
    [[nodiscard]] static std::string eraserBesideStatus() {
        return standardOutputIsTerminal() && standardErrorIsTerminal() ? lineEraser() : "";
    }

    std::unique_ptr<TextPrinter> explanation_; // null: nobody asks
    std::vector<OpenFile> files_;
    std::vector<std::unique_ptr<EventPrinter>> printers_;
    bool printsToOutput_ = false;
};

// Waits until the signals, the script or a broken output end the run.
Outcome waitForEnd(const StopSignals& signals, const LiveScript* script, const Printers& printers, Session& session,
                   StatusLine* status, Platform::AutoResetEvent& wake) {
    for (;;) {
        const auto say = [status](const std::string& text) {
            if (status != nullptr) {
                status->clear();
            }
            std::cerr << text << '\n';
        };
        for (const Fault& fault : session.takeFaults()) {
            say(fault.text()); // a file that a function asked for: said, and played without
        }
        for (const std::string& remark : session.takeRemarks()) {
            say(remark);
        }
        if (signals.wasAsked()) {
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
        static_cast<void>(wake.waitFor(betweenLooks));
    }
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

Outcome RunCommand::play() {
    auto found = findMidiSystem(midi_, wishes_);
    if (!found) {
        return found.fault();
    }
    Printers printers;
    for (const auto& target : {found.value().isNone ? std::optional<std::string>("-") : std::nullopt, events_}) {
        if (const Outcome added = target ? printers.add(*target) : Platform::success(); !added) {
            return added;
        }
    }
    Platform::AutoResetEvent wake;
    const StopSignals signals(wake);
    LivePlayer player(std::move(found.value().system));
    printers.attachTo(player);
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
    Outcome ended = Platform::success();
    Session* running = nullptr; // while the window may ask
    int looks = 0;
    const std::unique_ptr<ProgramWindow> window = headless_ ? nullptr : makeProgramWindow([&] {
        WindowNews news;
        news.end = signals.wasAsked() || !printers.state();
        for (const Fault& fault : running->takeFaults()) {
            news.faults.push_back(fault.text());
        }
        news.status.system = player.system().name();
        news.status.tempo = static_cast<int>(player.tempo().beatsPerMinute() + 0.5);
        news.status.heldNotes = player.heldNotes();
        if (looks++ % looksAProbe == 0) {
            player.sendProbe();
        }
        const RoadMeter::Reading road = player.road();
        news.status.latencyMs = road.latencyMs;
        news.status.jitterMs = road.jitterMs;
        return news;
    });
    {
        if (explain_) {
            session_.explainInput = printers.explanations(player);
        }
        Session session(player, session_);
        if (const Outcome started = session.start(player.system().inputs(), player.system().outputs()); !started) {
            return started;
        }
        player.start(session.qel());
        openTempoSource(player.system());
        std::cerr << found.value().remark << std::endl;
        std::optional<TakeServer> takes(session.qel().getRetroRecord());
        if (const Outcome served = takes->state(); !served) {
            std::cerr << "takes can be saved when the program has ended only: " << served.fault().text() << '\n';
        }
        std::unique_ptr<StatusLine> status;
        if (standardErrorIsTerminal()) {
            status = std::make_unique<StatusLine>(stderr, session.qel(), player);
        }
        std::unique_ptr<LiveScript> script;
        std::unique_ptr<TerminalKeyboard> keyboard;
        if (window) {
            running = &session;
            window->run(session.qel());
            ended = printers.state();
        } else if (standardInputIsTerminal()) {
            keyboard = std::make_unique<TerminalKeyboard>(session.qel(), player);
            if (!keyboard->state()) {
                std::cerr << keyboard->state().fault().text() << '\n';
            }
        } else {
            script = std::make_unique<LiveScript>(stdin, player, session.qel(), wake);
            printers.setStart(script->start());
        }
        if (!window) {
            ended = waitForEnd(signals, script.get(), printers, session, status.get(), wake);
        }
        script.reset();
        keyboard.reset();
        status.reset();
        player.releaseAll();
        takes.reset();
        session.end();
        player.stop();
        for (const std::string& remark : session.takeRemarks()) {
            std::cerr << remark << '\n';
        }
        if (const std::uint64_t missed = session.qel().getRetroRecord().missed(); missed > 0) {
            std::cerr << missed << " messages are missing in the record\n";
        }
    }
    printers.finish();
    reportCounts(player.system().counts());
    return ended;
}

} // namespace Host
