#include "generators/recording/RecordContent.h"

#include "generators/recording/BufferFiles.h"
#include "generators/recording/BufferReader.h"
#include "platform/SafeFiles.h"

#include <chrono>
#include <limits>
#include <string>
#include <system_error>

namespace Backend::Recording {

namespace fs = std::filesystem;
using Platform::Fault;
using Platform::Result;

namespace {

constexpr std::size_t longestIndex = 16 * 1024 * 1024;

// Milliseconds since 1970.
std::int64_t timeOf(const fs::path& file) {
    std::error_code error;
    const auto time = fs::last_write_time(file, error);
    if (error) {
        return 0;
    }
    const auto system = std::chrono::file_clock::to_sys(time).time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(system).count();
}

} // namespace

fs::path indexFile(const fs::path& folder) {
    return folder / "_takes.txt";
}

TakeList readTakes(const fs::path& folder) {
    TakeList list;
    for (const fs::path& file : BufferFiles::list(folder)) {
        list.beginFile();
        const auto content = Platform::readWholeFile(file, std::numeric_limits<std::uint32_t>::max());
        if (!content) {
            continue;
        }
        BufferReader events(content.value());
        std::size_t at = 0;
        for (BufferEvent event; events.next(event); at = events.position()) {
            list.add(event, static_cast<std::uint32_t>(events.position() - at), 0);
        }
    }
    return list;
}

std::vector<Take> takesIn(const fs::path& folder) {
    std::vector<Take> takes = readTakes(folder).takes();
    const auto index = Platform::readWholeFile(indexFile(folder), longestIndex);
    const std::vector<fs::path> files = BufferFiles::list(folder);
    setStarts(takes, index ? index.value() : std::string(), files.empty() ? 0 : timeOf(files.back()));
    return takes;
}

Result<SavedRecord> saveRecord(const fs::path& folder, const std::vector<Take>& takes, const fs::path& target,
                               std::optional<int> fromLast) {
    const std::vector<fs::path> files = BufferFiles::list(folder);
    if (!fromLast) {
        return writeMidiFile(target, files);
    }
    if (*fromLast < 1 || static_cast<std::size_t>(*fromLast) > takes.size()) {
        return Fault{"", 0, "there is no take " + std::to_string(*fromLast) + " of " + std::to_string(takes.size())};
    }
    const Take& take = takes[takes.size() - static_cast<std::size_t>(*fromLast)];
    return writeMidiFile(target, files, {take.begin, take.end});
}

} // namespace Backend::Recording
