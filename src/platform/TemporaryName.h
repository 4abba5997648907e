// Names for intermediate files that nobody can guess.
#pragma once

#include <filesystem>

namespace Platform {

// A name beside the target that is very likely free; whoever creates the file does so exclusively.
[[nodiscard]] std::filesystem::path temporaryNameBeside(const std::filesystem::path& target);
// The same for a FileReplacement, which shows whether its writer lives: left over, it is removed by the next one.
[[nodiscard]] std::filesystem::path nameForReplacement(const std::filesystem::path& target);
// True of names made by nameForReplacement().
[[nodiscard]] bool isNameForReplacement(const std::filesystem::path& file);

// The file that a write to `path` is meant for: symbolic links are followed.
[[nodiscard]] std::filesystem::path resolvedTarget(const std::filesystem::path& path);

} // namespace Platform
