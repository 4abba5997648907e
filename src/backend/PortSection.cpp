#include "backend/PortSection.h"

#include "backend/Selection.h"

#include <algorithm>

namespace Backend {

void PortSection::setInputs(const std::vector<MidiInputPort>& ports) {
    inputs_ = ports;
    engine_.postSetMidiInputPorts(ports);
}

void PortSection::setOutputs(const std::vector<MidiOutputPort>& ports) {
    outputs_ = ports;
    engine_.postSetMidiOutputPorts(ports);
}

void PortSection::enableInput(int port, bool on) {
    settings_.setMidiInputEnabled(port, on);
    for (std::size_t i = static_cast<std::size_t>(port) + 1; port >= 0 && i < inputs_.size(); ++i) {
        settings_.setMidiInputEnabled(static_cast<int>(i), inputs_[i].enabled); // setting one forgot those above it
    }
    engine_.postEnableMidiInput(port, on);
}

void PortSection::enableOutput(int port, bool on) {
    settings_.setMidiOutputEnabled(port, on);
    for (std::size_t i = static_cast<std::size_t>(port) + 1; port >= 0 && i < outputs_.size(); ++i) {
        settings_.setMidiOutputEnabled(static_cast<int>(i), outputs_[i].enabled);
    }
    engine_.postEnableMidiOutput(port, on);
}

bool PortSection::isInputEnabled(int port) const {
    return port >= 0 && static_cast<std::size_t>(port) < inputs_.size() &&
           inputs_[static_cast<std::size_t>(port)].enabled;
}

bool PortSection::isOutputEnabled(int port) const {
    return port >= 0 && static_cast<std::size_t>(port) < outputs_.size() &&
           outputs_[static_cast<std::size_t>(port)].enabled;
}

void PortSection::applySettings() {
    const std::vector<bool>& inputsOn = settings_.getMidiInputsEnabled();
    for (std::size_t i = 0; i < std::min(inputsOn.size(), inputs_.size()); ++i) {
        if (inputs_[i].enabled != inputsOn[i]) {
            engine_.postEnableMidiInput(static_cast<int>(i), inputsOn[i]);
        }
    }
    const std::vector<bool>& outputsOn = settings_.getMidiOutputsEnabled();
    for (std::size_t i = 0; i < std::min(outputsOn.size(), outputs_.size()); ++i) {
        if (outputs_[i].enabled != outputsOn[i]) {
            engine_.postEnableMidiOutput(static_cast<int>(i), outputsOn[i]);
        }
    }
    settleDefaultOutput();
}

// What the user chose last time, unless that port is not here now: then the first that is on.
void PortSection::settleDefaultOutput() {
    defaultOutput_ = settings_.getDefaultMidiOutput();
    if (!isOutputEnabled(defaultOutput_)) {
        const auto first =
            std::find_if(outputs_.begin(), outputs_.end(), [](const MidiPort& port) { return port.enabled; });
        defaultOutput_ = first == outputs_.end() ? 0 : static_cast<int>(first - outputs_.begin());
    }
    engine_.postSetDefaultMidiOutput(defaultOutput_);
}

void PortSection::changeDefaultOutput(const SelectType& which) {
    std::vector<int> enabled;
    for (std::size_t i = 0; i < outputs_.size(); ++i) {
        if (outputs_[i].enabled) {
            enabled.push_back(static_cast<int>(i));
        }
    }
    const auto placeOf = [&enabled](int port) {
        const auto found = std::find(enabled.begin(), enabled.end(), port);
        return found == enabled.end() ? -1 : static_cast<int>(found - enabled.begin());
    };
    const SelectType byPlace =
        which.getKind() == SelectType::Kind::fixed ? SelectType::fixed(placeOf(which.getIndex())) : which;
    const int place = selectedPlace(byPlace, placeOf(defaultOutput_), static_cast<int>(enabled.size()));
    if (place < 0 || enabled[static_cast<std::size_t>(place)] == defaultOutput_) {
        return;
    }
    defaultOutput_ = enabled[static_cast<std::size_t>(place)];
    settings_.setDefaultMidiOutput(defaultOutput_);
    engine_.postSetDefaultMidiOutput(defaultOutput_);
}

} // namespace Backend
