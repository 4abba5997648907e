// The current program and the current bank.
#pragma once

#include "backend/LayerSection.h"
#include "backend/Program.h"
#include "backend/ZoneSection.h"
#include "input/ComputerInputSection.h"
#include "input/ControlSection.h"
#include "input/JoystickSection.h"
#include "midiengine/MidiEngineMessageManager.h"
#include "platform/Result.h"
#include "values/RelativeFixedValue.h"
#include "values/SelectType.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace Backend {

// Loads programs into the sections; a file that cannot be read leaves everything as it is and is reported. [backend]
class ProgramSection final {
public:
    // All outlive the section.
    ProgramSection(MidiEngine::MidiEngineMessageManager& engine, LayerSection& layers, ZoneSection& zones,
                   ComputerInput::ComputerInputSection& keys, Controls::ControlSection& controls,
                   Joystick::JoystickSection& joysticks, const std::function<void(const Platform::Fault&)>& reportFault)
        : engine_(engine), layers_(layers), zones_(zones), keys_(keys), controls_(controls), joysticks_(joysticks),
          reportFault_(reportFault) {}

    // Installs a program without a file of its own.
    void apply(const Program& program);
    void loadProgram(const std::filesystem::path& file);
    // Loads a bank and its first program.
    void loadBank(const std::filesystem::path& file);
    // Steps through the slots of the bank.
    void changeProgram(const SelectType& which);

    [[nodiscard]] const std::string& name() const { return name_; }
    void rename(const std::string& name) { name_ = name; }
    [[nodiscard]] int slot() const { return slot_; }
    [[nodiscard]] int bankSize() const { return static_cast<int>(bank_.size()); }

    // Beats a minute; what goes beyond minTempo..maxTempo stays at the end of the range.
    [[nodiscard]] int tempo() const { return tempo_; }
    void changeTempo(const RelativeFixedValue& tempo);
    [[nodiscard]] int tempoSource() const { return tempoSource_; }
    void setTempoSource(int source);

private:
    MidiEngine::MidiEngineMessageManager& engine_;
    LayerSection& layers_;
    ZoneSection& zones_;
    ComputerInput::ComputerInputSection& keys_;
    Controls::ControlSection& controls_;
    Joystick::JoystickSection& joysticks_;
    const std::function<void(const Platform::Fault&)>& reportFault_;
    std::vector<Program> bank_;
    int slot_ = 0;
    std::string name_;
    int tempo_ = 120;
    int tempoSource_ = 0;
};

} // namespace Backend
