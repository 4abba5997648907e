#include "backend/ProgramSection.h"

#include "backend/ProgramXml.h"
#include "backend/Selection.h"

#include <algorithm>
#include <utility>

namespace Backend {

void ProgramSection::apply(const Program& program) {
    name_ = program.name;
    layers_.set(program.layers);
    zones_.set(program.zones);
    program.computerInput ? keys_.read(*program.computerInput) : keys_.setDefault();
    program.controls ? controls_.read(*program.controls) : controls_.setDefault();
    program.joystick ? joysticks_.read(*program.joystick) : joysticks_.setDefault();
    changeTempo(RelativeFixedValue::fixed(program.tempo));
    setTempoSource(program.tempoSource);
}

void ProgramSection::loadProgram(const std::filesystem::path& file) {
    const Platform::Result<Program> program = readProgramFile(file);
    program ? apply(program.value()) : reportFault_(program.fault());
}

void ProgramSection::loadBank(const std::filesystem::path& file) {
    Platform::Result<std::vector<Program>> bank = readBankFile(file);
    if (!bank) {
        reportFault_(bank.fault());
        return;
    }
    bank_ = std::move(bank.value());
    slot_ = 0;
    apply(bank_.front());
}

void ProgramSection::changeProgram(const SelectType& which) {
    const int slot = selectedPlace(which, slot_, bankSize());
    if (slot != slot_ && slot < bankSize()) {
        slot_ = slot;
        apply(bank_[static_cast<std::size_t>(slot)]);
    }
}

void ProgramSection::changeTempo(const RelativeFixedValue& tempo) {
    tempo_ = std::clamp(tempo.applyTo(tempo_), minTempo, maxTempo);
    engine_.postSetTempo(tempo_);
}

void ProgramSection::setTempoSource(int source) {
    tempoSource_ = source;
    engine_.postSetTempoSource(static_cast<unsigned char>(source));
}

} // namespace Backend
