#include "platform/SafeFiles.h"

#include "platform/PathText.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace Platform {

Result<std::string> readWholeFile(const std::filesystem::path& file, std::size_t maxBytes) {
    const auto failed = [&file](const std::string& reason) { return Fault{textOf(file), 0, reason}; };
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) {
        return failed(std::generic_category().message(EISDIR));
    }
    errno = 0;
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return failed(errno != 0 ? std::generic_category().message(errno) : "cannot be opened");
    }
    std::string content;
    const auto size = std::filesystem::file_size(file, error);
    if (!error && size <= maxBytes) {
        content.reserve(static_cast<std::size_t>(size) + 1);
    }
    // The size that a file reports is a hint only: it may grow, and devices report none.
    constexpr std::size_t pieceSize = 256 * 1024;
    for (bool more = true; more;) {
        const std::size_t before = content.size();
        content.resize(before + pieceSize);
        in.read(content.data() + before, static_cast<std::streamsize>(pieceSize));
        content.resize(before + static_cast<std::size_t>(in.gcount()));
        if (content.size() > maxBytes) {
            return failed("is bigger than " + std::to_string(maxBytes) + " bytes");
        }
        more = static_cast<bool>(in);
    }
    if (in.bad()) {
        return failed("cannot be read");
    }
    return content;
}

} // namespace Platform
