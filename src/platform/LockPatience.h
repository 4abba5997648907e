// How long a lock over a file is worth waiting for.
#pragma once

#include <chrono>
#include <filesystem>

namespace Platform {

// However many others change the file: as long as they do, it is a matter of time. Who holds the lock and changes
// nothing is waited for as long as FileLock has patience.
class LockPatience final {
public:
    explicit LockPatience(std::filesystem::path file);

    // False when it is at its end. To be asked again and again. [owner]
    [[nodiscard]] bool isLeft();

private:
    [[nodiscard]] std::filesystem::file_time_type lastChange() const;

    std::filesystem::path file_;
    std::filesystem::file_time_type changed_;
    std::chrono::nanoseconds until_;
};

} // namespace Platform
