#include "platform/SafeFiles.h"

#include "platform/Clocks.h"
#include "platform/PathText.h"
#include "platform/TemporaryName.h"
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

bool writeAll(int file, std::string_view content) noexcept {
    while (!content.empty()) {
        const ssize_t written = ::write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written < 0 ? 0 : written));
    }
    return true;
}

// Creates a file of that name, whose lock shows that its writer lives. 0 or the error number.
int createNewFile(const std::filesystem::path& name, Descriptor& file) {
    file = Descriptor(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file.isOpen()) {
        return errno;
    }
    // Who removes leftovers may have seen the file before it was locked. Without locks nobody removes any.
    struct stat status {};
    const bool isTaken = ::flock(file.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    return isTaken || (::fstat(file.number(), &status) == 0 && status.st_nlink == 0) ? EEXIST : 0;
}

// Puts the content into the new file, down to the disk. 0 or the error number.
int fillNewFile(const Descriptor& file, const std::filesystem::path& target, std::string_view content) {
    struct stat old {};
    const bool whole = (::stat(target.c_str(), &old) != 0 || ::fchmod(file.number(), old.st_mode & 07777) == 0) &&
                       writeAll(file.number(), content) && ::fsync(file.number()) == 0;
    return whole ? 0 : errno;
}

// Why a file is not to be written, which a rename would not mind: it is protected, or a device. 0 or the error number.
int protectionOf(const std::filesystem::path& file) {
    constexpr mode_t anybodyWrites = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || S_ISDIR(status.st_mode)) {
        return 0;
    }
    const bool mayBeWritten = S_ISREG(status.st_mode) && (status.st_mode & anybodyWrites) != 0;
    return !mayBeWritten ? EACCES : ::access(file.c_str(), W_OK) != 0 ? errno : 0;
}

// False when nothing comes, and no end either.
bool waitUntilReadable(int file) noexcept {
    constexpr int patience = 500; // milliseconds
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

Outcome replaceFile(const std::filesystem::path& givenTarget, std::string_view content) {
    const auto failed = [&givenTarget](int error) {
        return Fault{textOf(givenTarget), 0, std::generic_category().message(error)};
    };
    const std::filesystem::path target = resolvedTarget(givenTarget);
    if (const int protection = protectionOf(target); protection != 0) {
        return failed(protection);
    }
    std::filesystem::path temporary;
    Descriptor file; // open until the file has its name
    int error = EEXIST;
    for (int tries = 0; tries < 10 && error == EEXIST; ++tries) {
        temporary = nameForReplacement(target);
        error = createNewFile(temporary, file);
    }
    if (error != 0) {
        return failed(error);
    }
    error = fillNewFile(file, target, content);
    if (error == 0 && ::rename(temporary.c_str(), target.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        ::unlink(temporary.c_str());
        return failed(error);
    }
    // The new name is on disk when its folder is. The exchange itself has happened, so that a file system that
    // cannot flush folders makes no fault.
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.number() >= 0) {
        ::fsync(directory.number());
    }
    removeLeftovers(folder);
    return success();
}

Result<std::string> readWholeFile(const std::filesystem::path& path, std::size_t maxBytes) {
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
        if (mayKeepWaiting && !waitUntilReadable(file.number())) {
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
