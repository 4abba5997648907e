// No MIDI system: ports in name only.
#pragma once

#include "host/live/MidiSystem.h"

#include <string>
#include <vector>

namespace Host {

// Nothing arrives, and what is sent goes nowhere; the ports are always open.
class NoSystem final : public MidiSystem {
public:
    NoSystem(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs);

    [[nodiscard]] std::string name() const override { return "none"; }
    [[nodiscard]] std::unique_ptr<Clock> createClock(ClockedEngine& engine) override;
    void start(MidiSystemListener&) override {}
    void stop() override {}
    [[nodiscard]] std::vector<Backend::MidiInputPort> inputs() const override { return inputs_; }
    [[nodiscard]] std::vector<Backend::MidiOutputPort> outputs() const override { return outputs_; }
    void enableInput(int, bool) override {}
    void enableOutput(int, bool) override {}
    void send(const Backend::MidiEngine::QelMidiMessage&) noexcept override {}
    [[nodiscard]] MidiSystemCounts counts() const noexcept override { return {}; }

private:
    std::vector<Backend::MidiInputPort> inputs_;
    std::vector<Backend::MidiOutputPort> outputs_;
};

} // namespace Host
