// The verb that lists MIDI ports.
#pragma once

#include "host/Command.h"

namespace Host {

// tembrel ports: one line a port, "input JACK system:midi_capture_1"; with --watch also each that comes ("+ input ...")
// and goes ("- input ...").
class PortsCommand final : public Command {
public:
    explicit PortsCommand(CLI::App& commandLine);
    [[nodiscard]] const CLI::App& verb() const override { return *verb_; }
    [[nodiscard]] int run() override;

private:
    CLI::App* verb_;
    bool watch_ = false;
};

} // namespace Host
