#include "host/live/EventPrinters.h"

#include "host/live/LivePlayer.h"
#include "host/live/StepsText.h"
#include "host/live/Terminal.h"

#include <cerrno>
#include <cstring>
#include <iostream>

namespace Host {

using Platform::Fault;
using Platform::Outcome;

namespace {

// What makes room for a line where the status line stands.
std::string eraserBesideStatus() {
    return standardOutputIsTerminal() && standardErrorIsTerminal() ? lineEraser() : "";
}

} // namespace

Outcome EventPrinters::add(const std::string& target) {
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

void EventPrinters::attachTo(LivePlayer& player) {
    for (const auto& printer : printers_) {
        player.printTo(*printer);
    }
}

void EventPrinters::setStart(Backend::Ticks start) {
    for (const auto& printer : printers_) {
        printer->setStart(start);
    }
}

std::function<void(const Backend::MidiInput::InputSteps&)> EventPrinters::explanations(LivePlayer& player) {
    explanation_ = std::make_unique<TextPrinter>(stdout, eraserBesideStatus());
    return [this, &player](const Backend::MidiInput::InputSteps& steps) {
        const std::vector<Backend::MidiInputPort> inputs = player.system().inputs();
        const auto input = static_cast<std::size_t>(steps.incoming.getInput());
        explanation_->print(textOf(steps, input < inputs.size() ? inputs[input].name : "?"));
    };
}

Outcome EventPrinters::state() const {
    for (const auto& printer : printers_) {
        if (!printer->isGood()) {
            return Fault{{}, 0, "the events cannot be written any more"};
        }
    }
    return Platform::success();
}

std::uint64_t EventPrinters::written() const {
    std::uint64_t written = explanation_ ? explanation_->written() : 0;
    for (const auto& printer : printers_) {
        written += printer->written();
    }
    return written;
}

void EventPrinters::finish() {
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

} // namespace Host
