// The ring of buffer files on disk.
#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace Backend::Recording {

// "_current.tmp" is written; the older ones are "_0.tmp", the newest of them, "_1.tmp" and so on. Whatever moment the
// program ends at, they can be read in order. Used by one thread; after a fault nothing happens until recover().
class BufferFiles final {
public:
    explicit BufferFiles(std::filesystem::path folder);

    // The buffers that there are, oldest first. [any]
    [[nodiscard]] static std::vector<std::filesystem::path> list(const std::filesystem::path& folder);

    // No buffers but a current one that is empty.
    [[nodiscard]] Platform::Outcome clear();
    // Keeps an event in memory until write().
    void append(std::string_view event);
    // Hands what was appended to the system. A current file that is not there any more is a fault.
    [[nodiscard]] Platform::Outcome write();
    // Closes the current file, which becomes the newest of at most `mostOlder` older ones, and begins a new one. Gives
    // how many of the oldest are gone for it.
    [[nodiscard]] Platform::Result<int> rotate(std::uint32_t mostOlder);
    // Deletes the oldest beyond that many older ones; gives how many.
    [[nodiscard]] Platform::Result<int> limit(std::uint32_t mostOlder);
    // After a fault: tries to go on where the last write that succeeded ended.
    [[nodiscard]] Platform::Outcome recover();
    void close();

    [[nodiscard]] const std::filesystem::path& folder() const noexcept { return folder_; }
    // Of the current file, with what is still in memory.
    [[nodiscard]] std::uint32_t size() const noexcept { return written_ + static_cast<std::uint32_t>(pending_.size()); }
    [[nodiscard]] std::size_t pending() const noexcept { return pending_.size(); }

private:
    [[nodiscard]] std::filesystem::path current() const;
    [[nodiscard]] Platform::Outcome open(std::ios::openmode how);

    std::filesystem::path folder_;
    std::ofstream file_;
    std::string pending_;
    std::uint32_t written_ = 0;
};

} // namespace Backend::Recording
