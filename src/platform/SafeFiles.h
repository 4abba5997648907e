// File operations that the standard library does not give: replacement that survives a crash, whole
// reading with a bound, locks between processes.
#pragma once

#include "platform/FileReplacement.h"
#include "platform/Result.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace Platform {

// Writes a whole file in one step, as a FileReplacement. [any]
[[nodiscard]] Outcome replaceFile(const std::filesystem::path& target, std::string_view content,
                                  Survives survives = Survives::system);
// Removes the intermediate files in a folder whose writers were killed; those of living ones stay. [any]
void removeLeftovers(const std::filesystem::path& folder);
// The same of one such file. [any]
void removeIfAbandoned(const std::filesystem::path& leftover);

// How long nothing may come out of a pipe or a terminal, where the system tells: half a second, or as long as it likes.
enum class Waiting { briefly, endlessly };
// The whole content of a file of at most `maxBytes`; more is a fault, as is a wait that is over. [any]
[[nodiscard]] Result<std::string> readWholeFile(const std::filesystem::path& file, std::size_t maxBytes,
                                                Waiting waiting = Waiting::briefly);

// Holds a lock file against other processes (and other holders in this one) while it lives.
class FileLock final {
public:
    // Nobody who uses it properly holds a lock for nine tenths of a second; who was stopped while holding it may do so
    // for ever.
    enum class Patience { usual, none };
    static constexpr std::chrono::milliseconds usualPatience{900};
    // Creates the file where needed and, with patience, waits for the lock; isHeld() is false when that failed, or when
    // another holds it all the while.
    explicit FileLock(const std::filesystem::path& file, Patience patience = Patience::usual);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    [[nodiscard]] bool isHeld() const noexcept;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace Platform
