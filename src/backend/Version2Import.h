// Converts banks, programs and presets of version 2 into the files of today.
#pragma once

#include "platform/Result.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Backend {

enum class Version2Kind { bank, program, preset };

struct Version2Result {
    Version2Kind kind = Version2Kind::bank;
    std::string text;                      // of the new file
    std::vector<Platform::Fault> notTaken; // lines that were not understood
};

// Converts the text of a version-2 file; `name` is of the file, for faults. A section of a program that has no line
// falls back to "000 - Default". A fault when it is no such file. [any]
[[nodiscard]] Platform::Result<Version2Result> convertVersion2(std::string_view text, const std::string& name);

// Converts a file into another, which is written in one step, and gives what it was. With `expected` a file of another
// kind is a fault. [any]
[[nodiscard]] Platform::Result<Version2Result> importVersion2(const std::filesystem::path& source,
                                                              const std::filesystem::path& destination,
                                                              std::optional<Version2Kind> expected = {});

} // namespace Backend
