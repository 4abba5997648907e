#include "host/WholeFile.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <new>
#include <string>
#include <system_error>

namespace Host {

namespace fs = std::filesystem;

namespace {
constexpr std::size_t mostBytes = std::size_t{1} << 30;
}

Platform::Result<std::string> readWholeFile(const std::string& file) {
    const auto fault = [&](const std::string& reason) { return Platform::Fault{file, 0, reason}; };
    const auto tooBig = [&fault] { return fault("is bigger than " + std::to_string(mostBytes) + " bytes"); };
    std::error_code error;
    if (fs::is_directory(file, error)) {
        return fault("is a folder");
    }
    errno = 0;
    std::ifstream in(fs::path(file), std::ios::binary);
    if (!in) {
        return fault("cannot be read: " + std::generic_category().message(errno == 0 ? ENOENT : errno));
    }
    try {
        std::string content;
        const auto size = fs::is_regular_file(file, error) ? fs::file_size(file, error) : 0;
        if (!error && size > mostBytes) {
            return tooBig();
        }
        if (!error && size > 0) {
            content.resize(static_cast<std::size_t>(size));
            in.read(content.data(), static_cast<std::streamsize>(size));
            content.resize(static_cast<std::size_t>(in.gcount()));
        }
        // What a pipe gives, and what a file has grown by.
        for (char block[16 * 1024]; in.read(block, sizeof block) || in.gcount() > 0;) {
            content.append(block, static_cast<std::size_t>(in.gcount()));
            if (content.size() > mostBytes) { // a device need not have an end
                return tooBig();
            }
        }
        return in.bad() ? Platform::Result<std::string>(fault("cannot be read"))
                        : Platform::Result<std::string>(std::move(content));
    } catch (const std::bad_alloc&) {
        return fault("does not fit into memory");
    }
}

} // namespace Host
