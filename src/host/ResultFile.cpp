#include "host/ResultFile.h"

#include "platform/TemporaryName.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

namespace Host {

namespace fs = std::filesystem;
using Platform::Outcome;

namespace {

std::string errorText(int error) {
    return error == 0 ? std::string("unknown error") : std::generic_category().message(error);
}

} // namespace

ResultFile::ResultFile(const std::string& target) : name_(target), target_(target) {}

ResultFile::~ResultFile() {
    if (open_ && !isStandardOutput()) {
        file_.close();
        if (written_ != target_) {
            std::error_code ignored;
            fs::remove(written_, ignored);
        }
    }
}

Outcome ResultFile::open() {
    if (!isStandardOutput()) {
        std::error_code error;
        const fs::file_status status = fs::status(target_, error);
        if (fs::is_directory(status)) {
            return fault("is a folder");
        }
        const bool isSpecial = fs::exists(status) && !fs::is_regular_file(status);
        target_ = isSpecial ? target_ : Platform::resolvedTarget(target_);
        written_ = isSpecial ? target_ : temporaryName();
        errno = 0;
        file_.open(written_, std::ios::binary | std::ios::trunc);
        if (!file_) {
            return fault("cannot be written: " + errorText(errno));
        }
    }
    open_ = true;
    good_ = true;
    return Platform::success();
}

void ResultFile::write(std::string_view bytes) {
    if (!good_) {
        return;
    }
    errno = 0;
    if (isStandardOutput()) {
        good_ = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
    } else {
        good_ = static_cast<bool>(file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size())));
    }
    if (!good_) {
        firstError_ = errorText(errno);
    }
}

Outcome ResultFile::commit() {
    errno = 0;
    if (good_ && !(isStandardOutput() ? std::fflush(stdout) == 0 : static_cast<bool>(file_.flush()))) {
        good_ = false;
        firstError_ = errorText(errno);
    }
    if (!good_) {
        return fault("cannot be written: " + firstError_);
    }
    if (isStandardOutput()) {
        return Platform::success();
    }
    file_.close();
    if (!file_) {
        return fault("cannot be written");
    }
    if (written_ != target_) {
        std::error_code error;
        fs::rename(written_, target_, error);
        if (error) {
            return fault("cannot be replaced: " + error.message());
        }
    }
    open_ = false;
    return Platform::success();
}

fs::path ResultFile::temporaryName() const {
    return Platform::temporaryNameBeside(target_);
}

Platform::Fault ResultFile::fault(const std::string& reason) const {
    return {isStandardOutput() ? "standard output" : name_, 0, reason};
}

} // namespace Host
