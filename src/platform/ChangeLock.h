// Lets those who read a file, change what they have read and write it back do so one after the other.
#pragma once

#include "platform/Result.h"

#include <filesystem>
#include <memory>

namespace Platform {

// Against other processes and other holders in this one. While it is held a file stands beside the target, whose name
// begins with ".lock-"; what a killed process leaves of it keeps nobody out.
class ChangeLock final {
public:
    // Waits for others as long as they get on (LockPatience).
    explicit ChangeLock(const std::filesystem::path& target);
    ~ChangeLock();
    ChangeLock(const ChangeLock&) = delete;
    ChangeLock& operator=(const ChangeLock&) = delete;

    // A fault when another holds it and does not go on. Where nothing can be locked, as in a folder that is not there
    // or a file system without locks, everybody may go on. [owner]
    [[nodiscard]] Outcome state() const;

private:
    enum class Holder { us, another, nobody };
    struct State;

    void take(); // tries once; each system's own

    std::filesystem::path target_;
    std::filesystem::path file_;
    std::shared_ptr<State> state_; // null: nothing is held
    Holder holder_ = Holder::nobody;
};

} // namespace Platform
