// The MIDI ports as the backend knows them, which of them are on, and the default output.
#pragma once

#include "core/RegistrySettings.h"
#include "midiengine/MidiEngineMessageManager.h"
#include "values/MidiPort.h"
#include "values/SelectType.h"

#include <vector>

namespace Backend {

// Ports are the host's; this section keeps its lists, hands them to the engine and the user's choices to the
// settings. [backend]
class PortSection final {
public:
    // Both outlive the section.
    PortSection(MidiEngine::MidiEngineMessageManager& engine, RegistrySettings& settings)
        : engine_(engine), settings_(settings) {}

    void setInputs(const std::vector<MidiInputPort>& ports);
    void setOutputs(const std::vector<MidiOutputPort>& ports);
    [[nodiscard]] const std::vector<MidiInputPort>& inputs() const { return inputs_; }
    [[nodiscard]] const std::vector<MidiOutputPort>& outputs() const { return outputs_; }

    // The host opens or closes the port and sends its list again.
    void enableInput(int port, bool on);
    void enableOutput(int port, bool on);
    [[nodiscard]] bool isInputEnabled(int port) const;

    // Opens and closes ports as the user left them, where that is known, and settles the default output.
    void applySettings();

    [[nodiscard]] int defaultOutput() const { return defaultOutput_; }
    // Goes through enabled outputs only.
    void changeDefaultOutput(const SelectType& which);

private:
    [[nodiscard]] bool isOutputEnabled(int port) const;
    void settleDefaultOutput();

    MidiEngine::MidiEngineMessageManager& engine_;
    RegistrySettings& settings_;
    std::vector<MidiInputPort> inputs_;
    std::vector<MidiOutputPort> outputs_;
    int defaultOutput_ = 0;
};

} // namespace Backend
