#include "platform/FileReplacement.h"

#include "platform/PathText.h"
#include "platform/SafeFiles.h"
#include "platform/TemporaryName.h"
#include "platform/linux/Descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Platform {

namespace {

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

} // namespace

struct FileReplacement::State {
    std::filesystem::path given;
    std::filesystem::path target;
    std::filesystem::path written; // empty: there is none
    Descriptor file;               // open until the file has its name

    [[nodiscard]] Outcome outcomeOf(int error) const {
        return error == 0 ? success() : Outcome(Fault{textOf(given), 0, std::generic_category().message(error)});
    }
};

FileReplacement::FileReplacement(const std::filesystem::path& target)
    : state_(std::make_unique<State>(State{target, resolvedTarget(target), {}, Descriptor{}})) {}

FileReplacement::~FileReplacement() {
    if (!state_->written.empty()) {
        ::unlink(state_->written.c_str());
    }
}

Outcome FileReplacement::open() {
    if (const int protection = protectionOf(state_->target); protection != 0) {
        return state_->outcomeOf(protection);
    }
    int error = EEXIST;
    std::filesystem::path name;
    for (int tries = 0; tries < 10 && error == EEXIST; ++tries) {
        name = nameForReplacement(state_->target);
        error = createNewFile(name, state_->file);
    }
    if (error != 0) {
        return state_->outcomeOf(error);
    }
    state_->written = name;
    struct stat old {};
    const bool isAsTheOld =
        ::stat(state_->target.c_str(), &old) != 0 || ::fchmod(state_->file.number(), old.st_mode & 07777) == 0;
    return state_->outcomeOf(isAsTheOld ? 0 : errno);
}

Outcome FileReplacement::append(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(state_->file.number(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return state_->outcomeOf(errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(count < 0 ? 0 : count));
    }
    return success();
}

Outcome FileReplacement::commit(Survives survives) {
    const bool isFlushed = survives == Survives::process || ::fsync(state_->file.number()) == 0;
    if (!isFlushed || ::rename(state_->written.c_str(), state_->target.c_str()) != 0) {
        return state_->outcomeOf(errno);
    }
    state_->written.clear();
    const std::filesystem::path folder = state_->target.has_parent_path() ? state_->target.parent_path() : ".";
    if (survives == Survives::system) {
        // The new name is on disk when its folder is. The exchange itself has happened, so that a file system that
        // cannot flush folders makes no fault.
        const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (directory.isOpen()) {
            ::fsync(directory.number());
        }
    }
    state_->file.close();
    removeLeftovers(folder);
    return success();
}

} // namespace Platform
