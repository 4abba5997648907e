#include "backend/GuiUpdates.h"

#include "generators/OscillatorMessages.h"
#include "input/ComputerInputMessages.h"
#include "input/ControlMessages.h"
#include "input/JoystickMessages.h"
#include "platform/PathText.h"

namespace Backend {

using Gui::ChangedSetting;
using Gui::GuiMessage;

void GuiUpdates::look() {
    const Platform::WindowHandle window = window_.handle();
    if (window != lastWindow_) {
        told_ = {};
        lastWindow_ = window;
    }
    if (window != nullptr) {
        lookAtSettings();
        lookAtSections();
    }
}

void GuiUpdates::tell(ChangedSetting setting, int value) {
    const auto known = told_.settings.find(setting);
    if ((known == told_.settings.end() || known->second != value) &&
        window_.post(idOf(GuiMessage::setting), static_cast<std::uintptr_t>(setting), value)) {
        told_.settings[setting] = value;
    }
}

template <typename Value> void GuiUpdates::tell(std::optional<Value>& told, const Value& now, std::uint32_t id) {
    if (told != now && window_.postCopyOf(id, now)) {
        told = now;
    }
}

void GuiUpdates::lookAtSettings() {
    const RegistrySettings& settings = from_.settings;
    tell(ChangedSetting::tempo, from_.programs.tempo());
    tell(ChangedSetting::tempoSource, from_.programs.tempoSource());
    tell(ChangedSetting::defaultOutput, from_.ports.defaultOutput());
    tell(ChangedSetting::midiThru, settings.getMidiThru());
    tell(ChangedSetting::globalKeyboard, settings.getGlobalKeyboard());
    tell(ChangedSetting::retroRecordEnabled, settings.isRetroRecordEnabled());
    tell(ChangedSetting::retroRecordBufferSize, settings.getRetroRecordBufferSize());
    tell(ChangedSetting::alwaysOnTop, settings.getAlwaysOnTop());
    tell(ChangedSetting::useSkinBorder, settings.getUseSkinBorder());
    tell(ChangedSetting::dockToBottomEdge, settings.getDockToBottomEdge());
    tell(ChangedSetting::mouseSensitivity, settings.getMouseSensitivity());
    tell(ChangedSetting::largeDisplayFont, settings.getLargeDisplayFont());
    tell(ChangedSetting::clickZoneChannelTranspose, settings.getClickZoneChannelTranspose());
    tell(ChangedSetting::displayMidiInputEvents, settings.getDisplayMidiInputEvents());
    tell(ChangedSetting::displayMidiOutputEvents, settings.getDisplayMidiOutputEvents());
    tell(ChangedSetting::displayNumbers, settings.getDisplayNumbers());
    tell(ChangedSetting::displayHeight, settings.getDisplayHeight());
    tell(told_.defaultBank, settings.getDefaultBank(), idOf(GuiMessage::defaultBank));
}

void GuiUpdates::lookAtSections() {
    tell(told_.inputs, from_.ports.inputs(), idOf(GuiMessage::inputPorts));
    tell(told_.outputs, from_.ports.outputs(), idOf(GuiMessage::outputPorts));
    tell(told_.program, Gui::ProgramInfo{from_.programs.name(), from_.bank.slot()}, idOf(GuiMessage::program));
    if (told_.bank != from_.bank.revision() &&
        window_.postCopyOf(idOf(GuiMessage::bank),
                           Gui::BankInfo{Platform::textOf(from_.bank.path()), from_.bank.names()})) {
        told_.bank = from_.bank.revision();
    }
    if (told_.layers != from_.layers.revision() &&
        window_.postCopyOf(idOf(GuiMessage::layers),
                           Gui::LayersInfo{from_.layers.layers(), from_.layers.selectedForData(),
                                           from_.layers.selectedForEdit(), from_.layers.presetName()})) {
        told_.layers = from_.layers.revision();
    }
    if (!(told_.zones == from_.zones.zones()) && postCopy(from_.zones.zones(), [this](std::uintptr_t copy) {
            return window_.post(idOf(GuiMessage::zones), 0, static_cast<std::intptr_t>(copy));
        })) {
        told_.zones = from_.zones.zones();
    }
    if (told_.keys != from_.keys.sharedMap() &&
        window_.postCopyOf(ComputerInput::keysMessage, *from_.keys.sharedMap())) {
        told_.keys = from_.keys.sharedMap();
    }
    if (told_.controls != from_.controls.revision() &&
        window_.postCopyOf(Controls::controlsMessage, from_.controls.map())) {
        told_.controls = from_.controls.revision();
    }
    if (told_.selectedControls != from_.controls.selection() &&
        window_.postCopyOf(Controls::controlsSelectedMessage, from_.controls.selection())) {
        told_.selectedControls = from_.controls.selection();
    }
    if (!told_.oscillators && window_.postCopyOf(Oscillators::oscListMessage, from_.oscillators.list())) {
        told_.oscillators = true;
    }
    if (told_.joysticks != from_.joysticks.revision() &&
        window_.postCopyOf(Joystick::joysticksMessage, from_.joysticks.map())) {
        told_.joysticks = from_.joysticks.revision();
    }
    if (told_.sequences != from_.sequences.revision() &&
        window_.postCopyOf(idOf(GuiMessage::sequencePresets), from_.sequences.list())) {
        told_.sequences = from_.sequences.revision();
    }
}

} // namespace Backend
