// Buffers joined into a Standard MIDI File.
#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace Backend::Recording {

// Bytes of the joined buffers, from the start of the oldest.
struct BufferRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

struct SavedRecord {
    bool written = false; // false: there was nothing but All Sound Off, and there is no file
    std::uint64_t events = 0;
    std::uint64_t notes = 0;
    std::uint64_t milliseconds = 0; // from the first event to the last

    bool operator==(const SavedRecord&) const = default;
};

// Writes a file of format 0, 96 ticks a quarter note and without a tempo: the bytes of the buffers as they stand, each
// up to its first byte that belongs to no whole event, and an All Sound Off a quarter note later. The target is
// replaced when all is written; after a fault, or when there was nothing to write, it is as it was.
[[nodiscard]] Platform::Result<SavedRecord> writeMidiFile(const std::filesystem::path& target,
                                                          const std::vector<std::filesystem::path>& buffers);
// Only those bytes, with the first event at the start of the file.
[[nodiscard]] Platform::Result<SavedRecord> writeMidiFile(const std::filesystem::path& target,
                                                          const std::vector<std::filesystem::path>& buffers,
                                                          const BufferRange& range);

} // namespace Backend::Recording
