#include "platform/LockPatience.h"

#include "platform/Clocks.h"
#include "platform/SafeFiles.h"

#include <system_error>
#include <utility>

namespace Platform {

LockPatience::LockPatience(std::filesystem::path file)
    : file_(std::move(file)), changed_(lastChange()), until_(monotonicTime() + FileLock::usualPatience) {}

bool LockPatience::isLeft() {
    if (const auto now = lastChange(); now != changed_) {
        changed_ = now;
        until_ = monotonicTime() + FileLock::usualPatience;
    }
    return monotonicTime() < until_;
}

std::filesystem::file_time_type LockPatience::lastChange() const {
    std::error_code unknown;
    return std::filesystem::last_write_time(file_, unknown);
}

} // namespace Platform
