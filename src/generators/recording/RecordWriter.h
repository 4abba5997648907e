// What the recorder's thread does: events into buffers, takes, what happens when the disk does not want them.
#pragma once

#include "generators/recording/BufferFiles.h"
#include "generators/recording/MidiFileWriter.h"
#include "generators/recording/PlayedMessage.h"
#include "generators/recording/TakeList.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Backend::Recording {

struct RecordLimits {
    std::uint32_t fileSize = 100'000; // bytes of one buffer file
    std::uint32_t olderFiles = 10;    // beside the one that is written
};

struct RecordClocks {
    std::function<std::uint32_t()> milliseconds; // the one that stamps messages; it wraps
    std::function<std::int64_t()> calendar;      // milliseconds since 1970
};

// Used by one thread. When a file cannot be written, recording pauses: messages are passed over and counted, and each
// second it is tried again. `remark` is told once when that begins and once when something was written again.
class RecordWriter final {
public:
    RecordWriter(std::filesystem::path folder, const RecordLimits& limits, RecordClocks clocks,
                 std::function<void(const std::string&)> remark);

    void setLimits(const RecordLimits& limits);
    // Keeps the message for the next flush. A System Reset is passed over.
    void record(const PlayedMessage& message);
    // Tries to go on when recording has paused, and hands what was kept to the system, so that the end of the process
    // loses none of it. Milliseconds of the stamping clock.
    void resume(std::uint32_t now);
    void flush(std::uint32_t now);
    // The same, and the index is as it should be when the program ends.
    void close();

    [[nodiscard]] const std::filesystem::path& folder() const noexcept { return files_.folder(); }
    [[nodiscard]] std::vector<Take> takes() const;
    // All: the buffers are cleared then, unless it failed.
    [[nodiscard]] Platform::Result<SavedRecord> save(const std::filesystem::path& target, std::optional<int> fromLast);
    [[nodiscard]] std::uint64_t missed() const noexcept { return missed_; }

private:
    void clear();
    [[nodiscard]] Platform::Outcome makeRoom();
    void pause(const Platform::Fault& fault);
    void sayThatItGoesOn();
    void writeIndex();

    BufferFiles files_;
    RecordLimits limits_;
    RecordClocks clocks_;
    std::function<void(const std::string&)> remark_;
    TakeList takes_;

    std::uint32_t lastEvent_ = 0;     // when it was, milliseconds
    std::int64_t calendarOffset_ = 0; // from the stamping clock to the calendar, as of the last flush
    std::uint32_t offsetAt_ = 0;      // the stamping clock then
    std::uint32_t indexAt_ = 0;       // when the index was written last
    bool indexStale_ = true;

    bool paused_ = false;
    bool saidSo_ = false;
    std::uint32_t triedAt_ = 0;
    std::uint64_t missed_ = 0;
};

} // namespace Backend::Recording
