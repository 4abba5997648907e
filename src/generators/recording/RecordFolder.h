// Which folder a running program keeps its buffers in, and where those of the last one lie.
#pragma once

#include "platform/SafeFiles.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Backend::Recording {

// Held by one program at a time. The first to come has the buffer folder itself, others that run beside it have folders
// in it: "_2", "_3" and so on.
class RecordFolder final {
public:
    // A folder for a program that starts, made where it is missing; null when none can be had. What the last program
    // left in it moves into "_previous", in the place of what was there.
    [[nodiscard]] static std::unique_ptr<RecordFolder> claim(const std::filesystem::path& buffers);
    // The folder with the buffers that were written last, of those that no program holds; null when there are none.
    [[nodiscard]] static std::unique_ptr<RecordFolder> lastUsed(const std::filesystem::path& buffers);

    // True while a program that runs holds the folder.
    [[nodiscard]] static bool isHeld(const std::filesystem::path& folder);
    // Those that programs that run may hold, the first one's first.
    [[nodiscard]] static std::vector<std::filesystem::path> all(const std::filesystem::path& buffers);
    // Under which a running program that holds `folder` is asked for takes.
    [[nodiscard]] static std::string serverName(const std::filesystem::path& folder);

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    // What the program before the last one left.
    [[nodiscard]] static std::filesystem::path previous(const std::filesystem::path& folder);

private:
    explicit RecordFolder(std::filesystem::path path);

    std::filesystem::path path_;
    Platform::FileLock lock_;
};

} // namespace Backend::Recording
