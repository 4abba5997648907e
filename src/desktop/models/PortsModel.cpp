#include "desktop/models/PortsModel.h"

#include "desktop/models/Models.h"
#include "gui/GuiMessages.h"
#include "gui/QelGui.h"

namespace Desktop {

PortsModel::PortsModel(Models& models)
    : inputs_(models.gui().getMidiInputPorts()), outputs_(models.gui().getMidiOutputPorts()) {
    onCopy<std::vector<Backend::MidiInputPort>>(idOf(Gui::GuiMessage::inputPorts), [this, &models](auto ports) {
        inputs_ = std::move(ports);
        models.gui().getMidiInputPorts() = inputs_;
        emit changed();
    });
    onCopy<std::vector<Backend::MidiOutputPort>>(idOf(Gui::GuiMessage::outputPorts), [this, &models](auto ports) {
        outputs_ = std::move(ports);
        models.gui().getMidiOutputPorts() = outputs_;
        emit changed();
    });
}

QString PortsModel::outputName(int output) const {
    if (output < 0) {
        return tr("default");
    }
    const auto place = static_cast<std::size_t>(output);
    return place < outputs_.size() ? QString::fromStdString(outputs_[place].name) : tr("output %1").arg(output + 1);
}

QString PortsModel::inputName(int input) const {
    const auto place = static_cast<std::size_t>(input);
    return input >= 0 && place < inputs_.size() ? QString::fromStdString(inputs_[place].name)
                                                : tr("input %1").arg(input + 1);
}

} // namespace Desktop
