// Keeps the window's copies true: after each message the backend's state is held against what the window was last told.
#pragma once

#include "backend/BankSection.h"
#include "backend/GuiWindow.h"
#include "backend/LayerSection.h"
#include "backend/OscillatorSection.h"
#include "backend/PortSection.h"
#include "backend/ProgramSection.h"
#include "backend/SequencePresetManager.h"
#include "backend/ZoneSection.h"
#include "core/RegistrySettings.h"
#include "gui/GuiCopies.h"
#include "gui/GuiMessages.h"
#include "input/ComputerInputSection.h"
#include "input/ControlSection.h"
#include "input/JoystickSection.h"

#include <map>
#include <memory>
#include <optional>
#include <set>

namespace Backend {

// So no operation has to think of the window, and a new window is told everything. What has a message of its own (the
// value of a control that moves) is posted by its section. [backend]
class GuiUpdates final {
public:
    struct Sources {
        const RegistrySettings& settings;
        const PortSection& ports;
        const LayerSection& layers;
        const ZoneSection& zones;
        const ComputerInput::ComputerInputSection& keys;
        Controls::ControlSection& controls;
        const Joystick::JoystickSection& joysticks;
        const ProgramSection& programs;
        const BankSection& bank;
        const OscillatorSection& oscillators;
        const SequenceManagement::SequencePresetManager& sequences;
    };

    // All outlive the object.
    GuiUpdates(const GuiWindow& window, const Sources& sources) : window_(window), from_(sources) {}

    // Posts what has changed. What the window's queue does not take is posted the next time.
    void look();

private:
    // What the window knows; nothing: it has not been told.
    struct Told {
        std::map<Gui::ChangedSetting, int> settings;
        std::optional<std::string> defaultBank;
        std::optional<std::vector<MidiInputPort>> inputs;
        std::optional<std::vector<MidiOutputPort>> outputs;
        std::optional<Gui::ProgramInfo> program;
        std::optional<std::uint32_t> bank;
        std::optional<std::uint32_t> layers;
        std::optional<Zones::ZoneMap> zones;
        std::shared_ptr<const ComputerInput::KeyConfigurationMap> keys;
        std::optional<std::uint32_t> controls;
        std::optional<std::set<Cell>> selectedControls;
        std::optional<std::uint32_t> joysticks;
        std::uint32_t sequences = 0; // it was made with those of the start
        bool oscillators = false;    // their section posts its changes itself
    };

    void lookAtSettings();
    void lookAtSections();
    void tell(Gui::ChangedSetting setting, int value);
    template <typename Value> void tell(std::optional<Value>& told, const Value& now, std::uint32_t id);

    const GuiWindow& window_;
    Sources from_;
    Platform::WindowHandle lastWindow_ = nullptr;
    Told told_;
};

} // namespace Backend
