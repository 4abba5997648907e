#include "platform/ChangeLock.h"

#include "platform/LockPatience.h"
#include "platform/PathText.h"
#include "platform/TemporaryName.h"
#include "platform/Threads.h"

namespace Platform {

namespace {

// The same whoever makes it, and on every system that tells names apart as the target's folder does.
std::filesystem::path lockFileOf(const std::filesystem::path& target) {
    constexpr std::size_t longestPart = 200; // a name may have 255
    return target.parent_path() /
           (std::filesystem::path(".lock-").native() + target.filename().native().substr(0, longestPart));
}

} // namespace

ChangeLock::ChangeLock(const std::filesystem::path& target)
    : target_(resolvedTarget(target)), file_(lockFileOf(target_)) {
    LockPatience patience(target_);
    for (take(); holder_ == Holder::another && patience.isLeft(); take()) {
        sleepMilliseconds(1);
    }
}

Outcome ChangeLock::state() const {
    if (holder_ == Holder::another) {
        return Fault{textOf(target_), 0, "another program is changing it and does not come to an end"};
    }
    return success();
}

} // namespace Platform
