// The current program.
#pragma once

#include "backend/Program.h"
#include "backend/ProgramPart.h"
#include "midiengine/MidiEngineMessageManager.h"
#include "platform/Result.h"
#include "values/RelativeFixedValue.h"

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace Backend {

// Loads programs into the sections and writes them from there. A text or file that cannot be read leaves everything as
// it is and is reported. Sections and attributes that nobody here knows stay with the program and are written again.
// [backend]
class ProgramSection final {
public:
    // All outlive the section. `parts`: in the order in which they are written.
    ProgramSection(MidiEngine::MidiEngineMessageManager& engine, std::vector<ProgramPart> parts,
                   const std::function<void(const Platform::Fault&)>& reportFault);

    // Installs a program; a section that it does not have gets its default.
    void apply(const Program& program);
    // Writes the program as it is now. With `allowReferences` a section that its preset says all of is the name of it.
    void write(std::ostream& out, int depth, bool allowReferences) const;

    void loadProgram(const std::filesystem::path& file);
    // The file is written in one step; false when it could not be, which is reported.
    bool saveToProgram(const std::filesystem::path& file) const;

    // A program by itself, without references: for whoever keeps it elsewhere.
    [[nodiscard]] std::string text() const;
    void setText(const std::string& text);

    [[nodiscard]] const std::string& name() const { return program_.name; }
    // What XML cannot hold becomes a blank.
    void rename(const std::string& name);

    // Beats a minute; what goes beyond minTempo..maxTempo stays at the end of the range.
    [[nodiscard]] int tempo() const { return program_.tempo; }
    void changeTempo(const RelativeFixedValue& tempo);
    [[nodiscard]] int tempoSource() const { return program_.tempoSource; }
    void setTempoSource(int source);

private:
    MidiEngine::MidiEngineMessageManager& engine_;
    std::vector<ProgramPart> parts_;
    const std::function<void(const Platform::Fault&)>& reportFault_;
    Program program_; // its sections: those that no part knows
};

} // namespace Backend
