// File operations that the standard library does not give: replacement that survives a crash, whole
// reading with a bound, locks between processes.
#pragma once

#include "platform/Result.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace Platform {

// Writes a whole file in one step: readers and a crash at any moment see the old content or the new, whole and on
// disk. The intermediate file stands beside the target and is gone afterwards. A target that is a symbolic link stays
// one: the file it leads to is replaced. After a fault the target is as it was. [any]
[[nodiscard]] Outcome replaceFile(const std::filesystem::path& target, std::string_view content);

// The whole content of a file of at most `maxBytes`; more is a fault. [any]
[[nodiscard]] Result<std::string> readWholeFile(const std::filesystem::path& file, std::size_t maxBytes);

// Holds a lock file against other processes (and other holders in this one) while it lives.
class FileLock final {
public:
    enum class Patience { untilFree, none };
    // Creates the file where needed and, with patience, waits for the lock; isHeld() is false when that failed, or when
    // another holds it.
    explicit FileLock(const std::filesystem::path& file, Patience patience = Patience::untilFree);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    [[nodiscard]] bool isHeld() const noexcept;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace Platform
