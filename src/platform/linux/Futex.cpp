#include "platform/linux/Futex.h"

#include <cerrno>
#include <ctime>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Platform {
namespace {

static_assert(sizeof(std::atomic<std::uint32_t>) == sizeof(std::uint32_t));

} // namespace

bool futexWait(const std::atomic<std::uint32_t>& word, std::uint32_t expected,
               std::optional<std::chrono::nanoseconds> deadline) noexcept {
    timespec until{};
    if (deadline) {
        until.tv_sec = static_cast<time_t>(deadline->count() / 1'000'000'000);
        until.tv_nsec = static_cast<long>(deadline->count() % 1'000'000'000);
    }
    // The bitset form takes an absolute time of the monotonic clock.
    const long outcome = syscall(SYS_futex, &word, FUTEX_WAIT_BITSET | FUTEX_PRIVATE_FLAG, expected,
                                 deadline ? &until : nullptr, nullptr, FUTEX_BITSET_MATCH_ANY);
    return outcome == 0 || errno != ETIMEDOUT;
}

void futexWakeOne(const std::atomic<std::uint32_t>& word) noexcept {
    syscall(SYS_futex, &word, FUTEX_WAKE | FUTEX_PRIVATE_FLAG, 1, nullptr, nullptr, 0);
}

} // namespace Platform
