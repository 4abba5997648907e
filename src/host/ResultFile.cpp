#include "host/ResultFile.h"

#include "platform/TemporaryName.h"

#include <cerrno>
#include <iostream>
#include <system_error>

namespace Host {

namespace fs = std::filesystem;
using Platform::Outcome;

namespace {

std::string textOfErrno() {
    return errno == 0 ? std::string("unknown error") : std::generic_category().message(errno);
}

} // namespace

ResultFile::ResultFile(const std::string& target) : name_(target) {}

Outcome ResultFile::open() {
    std::error_code ignored;
    const fs::file_status status = fs::status(name_, ignored);
    good_ = true;
    if (name_ == "-") {
        direct_ = &std::cout;
    } else if (fs::is_directory(status)) {
        return fail("is a folder");
    } else if (fs::exists(status) && !fs::is_regular_file(status)) {
        errno = 0;
        device_.open(name_, std::ios::binary | std::ios::trunc);
        direct_ = &device_;
        return device_ ? Platform::success() : fail("cannot be written: " + textOfErrno());
    } else if (const Outcome opened = replacement_.emplace(name_).open(); !opened) {
        return fail("cannot be written: " + opened.fault().reason);
    }
    return Platform::success();
}

void ResultFile::write(std::string_view bytes) {
    if (!good_) {
        return;
    }
    if (replacement_) {
        const Outcome written = replacement_->append(bytes);
        good_ = static_cast<bool>(written);
        firstError_ = good_ ? "" : written.fault().reason;
    } else {
        errno = 0;
        good_ = static_cast<bool>(direct_->write(bytes.data(), static_cast<std::streamsize>(bytes.size())));
        firstError_ = good_ ? "" : textOfErrno();
    }
}

Outcome ResultFile::commit() {
    if (good_ && direct_ != nullptr) {
        errno = 0;
        good_ = static_cast<bool>(direct_->flush());
        firstError_ = good_ ? "" : textOfErrno();
    }
    if (!good_) {
        return fail("cannot be written: " + firstError_);
    }
    if (replacement_) {
        if (const Outcome replaced = replacement_->commit(Platform::Survives::process); !replaced) {
            return fail("cannot be replaced: " + replaced.fault().reason);
        }
    }
    return Platform::success();
}

fs::path ResultFile::temporaryName() const {
    return Platform::temporaryNameBeside(Platform::resolvedTarget(name_));
}

Outcome ResultFile::fail(const std::string& reason) {
    good_ = false;
    return Platform::Fault{name_ == "-" ? "standard output" : name_, 0, reason};
}

} // namespace Host
