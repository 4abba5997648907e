// What a folder of buffers holds.
#pragma once

#include "generators/recording/MidiFileWriter.h"
#include "generators/recording/TakeList.h"
#include "platform/Result.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace Backend::Recording {

[[nodiscard]] std::filesystem::path indexFile(const std::filesystem::path& folder);

// Reads the buffers of a folder again, each up to its first byte that belongs to no whole event; start times are those
// of the events as far as the index tells, otherwise estimated.
[[nodiscard]] TakeList readTakes(const std::filesystem::path& folder);
[[nodiscard]] std::vector<Take> takesIn(const std::filesystem::path& folder);

// Writes the whole record of a folder, or one take, counted from the last, which is 1. `takes` are those of the folder.
[[nodiscard]] Platform::Result<SavedRecord> saveRecord(const std::filesystem::path& folder,
                                                       const std::vector<Take>& takes,
                                                       const std::filesystem::path& target,
                                                       std::optional<int> fromLast);

} // namespace Backend::Recording
