// The verb that plays live.
#pragma once

#include "host/Command.h"
#include "host/Session.h"
#include "host/live/MidiSystems.h"
#include "platform/Result.h"

#include <optional>
#include <string>

namespace Host {

// tembrel run: starts the controller and plays until it is told to end, or until its script ends.
class RunCommand final : public Command {
public:
    explicit RunCommand(CLI::App& commandLine);
    [[nodiscard]] const CLI::App& verb() const override { return *verb_; }
    [[nodiscard]] int run() override;

private:
    [[nodiscard]] Platform::Outcome play();

    CLI::App* verb_;
    SessionOptions session_;
    PortWishes wishes_;
    std::optional<MidiSystemKind> midi_;
    std::optional<std::string> events_;
    std::string tempoSource_ = "internal";
    bool headless_ = false;
};

} // namespace Host
