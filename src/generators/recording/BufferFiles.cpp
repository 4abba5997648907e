#include "generators/recording/BufferFiles.h"

#include "platform/PathText.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <optional>
#include <system_error>
#include <utility>

namespace Backend::Recording {

namespace fs = std::filesystem;
using Platform::Fault;
using Platform::Outcome;
using Platform::Result;

namespace {

const char* const currentName = "_current.tmp";

fs::path olderName(const fs::path& folder, std::uint32_t number) {
    return folder / ("_" + std::to_string(number) + ".tmp");
}

std::optional<std::uint32_t> numberOf(const fs::path& file) {
    const std::string name = Platform::textOf(file.filename());
    std::uint32_t number = 0;
    const char* const begin = name.data() + 1;
    if (!name.starts_with('_') || !name.ends_with(".tmp")) {
        return std::nullopt;
    }
    const char* const end = name.data() + name.size() - 4;
    const auto read = std::from_chars(begin, end, number);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

// Ascending.
std::vector<std::uint32_t> olderNumbers(const fs::path& folder) {
    std::vector<std::uint32_t> numbers;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        if (const auto number = numberOf(at->path())) {
            numbers.push_back(*number);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

Fault faultOf(const fs::path& file, const std::error_code& error) {
    return {Platform::textOf(file), 0, error.message()};
}

} // namespace

BufferFiles::BufferFiles(fs::path folder) : folder_(std::move(folder)) {
    file_.rdbuf()->pubsetbuf(nullptr, 0);
}

std::vector<fs::path> BufferFiles::list(const fs::path& folder) {
    std::vector<fs::path> files;
    const std::vector<std::uint32_t> numbers = olderNumbers(folder);
    for (auto number = numbers.rbegin(); number != numbers.rend(); ++number) {
        files.push_back(olderName(folder, *number));
    }
    if (std::error_code error; fs::is_regular_file(folder / currentName, error)) {
        files.push_back(folder / currentName);
    }
    return files;
}

Outcome BufferFiles::clear() {
    close();
    pending_.clear();
    written_ = 0; // also when what follows fails: recover() takes it up from there
    if (const auto limited = limit(0); !limited) {
        return limited.fault();
    }
    return open(std::ios::trunc);
}

void BufferFiles::append(std::string_view event) {
    pending_.append(event);
}

Outcome BufferFiles::write() {
    std::error_code error;
    // Writing into a file that was deleted, or moved for a folder, would succeed.
    if (const auto type = fs::status(current(), error).type();
        type == fs::file_type::not_found || type == fs::file_type::directory) {
        return Fault{Platform::textOf(current()), 0, "is not there any more"};
    }
    if (pending_.empty()) {
        return Platform::success();
    }
    errno = 0;
    file_.write(pending_.data(), static_cast<std::streamsize>(pending_.size())).flush();
    if (!file_) {
        return faultOf(current(), {errno != 0 ? errno : EIO, std::generic_category()});
    }
    written_ += static_cast<std::uint32_t>(pending_.size());
    pending_.clear();
    return Platform::success();
}

Result<int> BufferFiles::rotate(std::uint32_t mostOlder) {
    if (const Outcome written = write(); !written) {
        return written.fault();
    }
    close();
    // The oldest makes room, as far as room must be made. A gap in the numbers is what an earlier attempt left that
    // failed half-way: those below it are still to be moved.
    const auto dropped = limit(mostOlder > 0 ? mostOlder - 1 : 0);
    if (!dropped) {
        return dropped;
    }
    std::error_code error;
    if (mostOlder == 0) {
        fs::remove(current(), error);
    } else {
        std::uint32_t gap = 0;
        for (const std::uint32_t number : olderNumbers(folder_)) {
            gap += number == gap ? 1 : 0;
        }
        for (; gap > 0 && !error; --gap) {
            fs::rename(olderName(folder_, gap - 1), olderName(folder_, gap), error);
        }
        if (!error) {
            fs::rename(current(), olderName(folder_, 0), error);
        }
    }
    if (error) {
        return faultOf(folder_, error);
    }
    if (const Outcome opened = open(std::ios::trunc); !opened) {
        return opened.fault();
    }
    return dropped.value() + (mostOlder == 0 ? 1 : 0);
}

Result<int> BufferFiles::limit(std::uint32_t mostOlder) {
    std::vector<std::uint32_t> numbers = olderNumbers(folder_);
    int dropped = 0;
    for (; numbers.size() > mostOlder; numbers.pop_back(), ++dropped) {
        std::error_code error;
        fs::remove(olderName(folder_, numbers.back()), error);
        if (error) {
            return faultOf(olderName(folder_, numbers.back()), error);
        }
    }
    return dropped;
}

Outcome BufferFiles::recover() {
    close();
    std::error_code error;
    fs::create_directory(folder_, error); // not those above it: they may be a drive that has been taken away
    if (fs::exists(current(), error)) {
        const std::uint32_t good = written_;
        if (fs::resize_file(current(), good, error); error) { // a part of what failed may have been written
            return faultOf(current(), error);
        }
        if (const Outcome opened = open(std::ios::app); !opened) {
            return opened;
        }
        written_ = good;
    } else if (const Outcome opened = open(std::ios::trunc); !opened) {
        return opened;
    }
    return write();
}

void BufferFiles::close() {
    file_.close();
    file_.clear();
}

fs::path BufferFiles::current() const {
    return folder_ / currentName;
}

Outcome BufferFiles::open(std::ios::openmode how) {
    errno = 0;
    file_.open(current(), std::ios::binary | std::ios::out | how);
    if (!file_) {
        return faultOf(current(), {errno != 0 ? errno : EIO, std::generic_category()});
    }
    written_ = 0;
    return Platform::success();
}

} // namespace Backend::Recording
