// The running record of what is played, as others may ask for it.
#pragma once

#include "generators/recording/MidiFileWriter.h"
#include "generators/recording/TakeList.h"
#include "platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace Backend::Recording {

// All operations wait for the recorder's thread: milliseconds, or as long as its disk takes. [any but clock]
class RetroRecord {
public:
    // Where the buffers lie; empty while nothing is recorded.
    [[nodiscard]] virtual std::filesystem::path folder() = 0;
    // Oldest first; the last one may still go on.
    [[nodiscard]] virtual std::vector<Take> takes() = 0;
    // Writes everything that is kept into a MIDI file, or one take, counted from the last, which is 1. When everything
    // has been written, the record begins anew.
    [[nodiscard]] virtual Platform::Result<SavedRecord> save(const std::filesystem::path& target,
                                                             std::optional<int> fromLast) = 0;
    // Messages that could not be recorded, in all: the recorder was too slow, or could not write.
    [[nodiscard]] virtual std::uint64_t missed() = 0;

protected:
    ~RetroRecord() = default;
};

} // namespace Backend::Recording
