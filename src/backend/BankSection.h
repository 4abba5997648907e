// The current bank: a file of programs, a slot each.
#pragma once

#include "backend/BankText.h"
#include "backend/ProgramSection.h"
#include "platform/Result.h"
#include "platform/WindowMessages.h"
#include "values/SelectType.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Backend {

// Programs are changed from memory, so that no disk is waited for while playing. What is saved is put into the file as
// it is then: other programs in it stay as they are, byte for byte, whoever has written them, also at the same moment.
// A file that has been removed is made again from memory, and its folder. What fails is reported and leaves every file
// as it was. [backend]
class BankSection final {
public:
    // Both outlive the section.
    BankSection(ProgramSection& programs, const std::function<void(const Platform::Fault&)>& reportFault)
        : programs_(programs), reportFault_(reportFault) {}

    // Names the current bank's file without looking at it.
    void setPath(const std::filesystem::path& file) { path_ = file; }
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    // Loads a bank and its first program.
    void load(const std::filesystem::path& file);
    [[nodiscard]] int slot() const { return slot_; }
    [[nodiscard]] int size() const { return static_cast<int>(names_.size()); }
    [[nodiscard]] const std::vector<std::string>& names() const { return names_; }
    // Another number after each change of what the bank holds.
    [[nodiscard]] std::uint32_t revision() const { return revision_; }
    // Steps through the slots. An unsaved program is given up.
    void changeProgram(const SelectType& which);

    // The current program goes into that slot of the current bank.
    void saveToCurrentBank(int slot, Platform::WindowHandle owner);
    // The current bank, with the current program in the current slot, becomes the file; the current bank stays it.
    void saveToBank(const std::filesystem::path& file, Platform::WindowHandle owner);
    // Takes programs from the end, or adds empty ones there. Another program is changed to when its slot goes.
    void changeSize(int size);

private:
    // What the current bank's file holds now; what it held when there is none any more.
    [[nodiscard]] Platform::Result<BankText> asItIs() const;
    [[nodiscard]] Platform::Outcome save(const std::filesystem::path& target, int slot);
    [[nodiscard]] Platform::Outcome resize(int size);
    // Into the current bank's file.
    [[nodiscard]] Platform::Outcome write(BankText changed);
    // What the current bank's file now holds.
    void takeIn(BankText bank);
    // Only of a bank that is there.
    void applySlot();

    ProgramSection& programs_;
    const std::function<void(const Platform::Fault&)>& reportFault_;
    std::filesystem::path path_;
    std::optional<BankText> bank_;   // as its file was last seen
    std::vector<std::string> names_; // of its programs
    std::uint32_t revision_ = 0;
    int slot_ = 0;
};

} // namespace Backend
