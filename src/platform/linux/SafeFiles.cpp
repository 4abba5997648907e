#include "platform/SafeFiles.h"

#include "platform/Clocks.h"
#include "platform/PathText.h"
#include "platform/Threads.h"
#include "platform/linux/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Platform {

using namespace std::chrono_literals;

namespace {

// False when nothing comes, and no end either.
bool waitUntilReadable(int file, Waiting waiting) noexcept {
    const int patience = waiting == Waiting::briefly ? 500 : -1; // milliseconds
    pollfd polled{file, POLLIN, 0};
    int ready = -1;
    do {
        ready = ::poll(&polled, 1, patience);
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

} // namespace

void removeIfAbandoned(const std::filesystem::path& leftover) {
    const Descriptor file(::open(leftover.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file.isOpen() && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0) {
        ::unlink(leftover.c_str());
    }
}

Result<std::string> readWholeFile(const std::filesystem::path& path, std::size_t maxBytes, Waiting waiting) {
    const auto failed = [&path](int error) { return Fault{textOf(path), 0, std::generic_category().message(error)}; };
    // Opening a pipe without its writer would wait for one.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0) {
        return failed(errno);
    }
    const bool mayKeepWaiting = !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
    // The size is a hint only: a file may grow, and devices report none.
    constexpr std::size_t leastPiece = 64 * 1024;
    const auto size = static_cast<std::size_t>(status.st_size);
    std::string content;
    for (std::size_t filled = 0;;) {
        content.resize(filled + std::max(leastPiece, size > filled && size <= maxBytes ? size - filled + 1 : 0));
        if (mayKeepWaiting && !waitUntilReadable(file.number(), waiting)) {
            return failed(ETIMEDOUT);
        }
        const ssize_t got = ::read(file.number(), content.data() + filled, content.size() - filled);
        if (got < 0 && errno != EINTR && errno != EAGAIN) {
            return failed(errno);
        }
        filled += static_cast<std::size_t>(std::max<ssize_t>(got, 0));
        if (filled > maxBytes) {
            return Fault{textOf(path), 0, "is bigger than " + std::to_string(maxBytes) + " bytes"};
        }
        if (got == 0) {
            content.resize(filled);
            return content;
        }
    }
}

struct FileLock::State {
    Descriptor file;
    bool isHeld = false;

    State(const std::filesystem::path& path, Patience patience)
        : file(::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666)) {
        // This kind of lock belongs to the open file, so that it also keeps out other holders of this process.
        const auto deadline = monotonicTime() + (patience == Patience::none ? 0ms : usualPatience);
        while (file.number() >= 0 && !isHeld) {
            isHeld = ::flock(file.number(), LOCK_EX | LOCK_NB) == 0;
            const bool mayPass = !isHeld && (errno == EINTR || errno == EWOULDBLOCK);
            if (isHeld || !mayPass || monotonicTime() >= deadline) {
                break;
            }
            sleepMilliseconds(1);
        }
    }
};

FileLock::FileLock(const std::filesystem::path& file, Patience patience)
    : state_(std::make_unique<State>(file, patience)) {}
FileLock::~FileLock() = default;
bool FileLock::isHeld() const noexcept {
    return state_->isHeld;
}

} // namespace Platform
