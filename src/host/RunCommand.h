// The verb that plays live.
#pragma once

#include "host/Command.h"
#include "host/Session.h"
#include "host/live/MidiSystems.h"
#include "platform/Result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Host {

class EventPrinters;
class LivePlayer;
struct RunEnding;

// tembrel run: starts the controller and plays until it is told to end, or until its script ends.
class RunCommand final : public Command {
public:
    explicit RunCommand(CLI::App& commandLine);
    [[nodiscard]] const CLI::App& verb() const override { return *verb_; }
    [[nodiscard]] int run() override;

private:
    [[nodiscard]] Platform::Outcome play();
    // From the first message to the last. `remark` is said once it plays.
    [[nodiscard]] Platform::Outcome perform(LivePlayer& player, EventPrinters& printers, const RunEnding& ending,
                                            const std::string& remark);
    // The tempo source and the clock that is sent.
    [[nodiscard]] Platform::Outcome setTime(LivePlayer& player) const;
    // The number of the tempo source that was asked for, in that system.
    [[nodiscard]] Platform::Result<std::uint8_t> tempoSourceIn(const MidiSystem& system) const;
    // Lets its clock in.
    void openTempoSource(MidiSystem& system) const;

    CLI::App* verb_;
    SessionOptions session_;
    PortWishes wishes_;
    std::optional<MidiSystemKind> midi_;
    std::optional<std::string> events_;
    std::optional<std::string> tempoSource_;
    std::vector<std::string> clockOutputs_;
    bool headless_ = false;
    bool explain_ = false;
};

} // namespace Host
