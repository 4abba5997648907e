// The MIDI ports.
#pragma once

#include "desktop/models/Model.h"
#include "values/MidiPort.h"

#include <QString>
#include <vector>

namespace Desktop {

class Models;

class PortsModel final : public Model {
    Q_OBJECT

public:
    explicit PortsModel(Models& models);

    [[nodiscard]] const std::vector<Backend::MidiInputPort>& inputs() const { return inputs_; }
    [[nodiscard]] const std::vector<Backend::MidiOutputPort>& outputs() const { return outputs_; }
    // Its number, counted from 1, where there is no such port; -1 is the default output.
    [[nodiscard]] QString outputName(int output) const;
    [[nodiscard]] QString inputName(int input) const;

private:
    std::vector<Backend::MidiInputPort> inputs_;
    std::vector<Backend::MidiOutputPort> outputs_;
};

} // namespace Desktop
