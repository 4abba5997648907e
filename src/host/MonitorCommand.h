// The verb that shows what arrives.
#pragma once

#include "host/Command.h"
#include "host/live/MidiSystems.h"

#include <optional>
#include <string>
#include <vector>

namespace Host {

// tembrel monitor [PORT...]: one line a message, "0.512304 Keystation: Note On, channel 1, 60 (C4), 100", until Ctrl-C.
class MonitorCommand final : public Command {
public:
    explicit MonitorCommand(CLI::App& commandLine);
    [[nodiscard]] const CLI::App& verb() const override { return *verb_; }
    [[nodiscard]] int run() override;

private:
    CLI::App* verb_;
    std::vector<std::string> ports_;
    std::optional<MidiSystemKind> midi_;
};

} // namespace Host
