// A file that is written beside the one whose place it takes.
#pragma once

#include "platform/Result.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace Platform {

// What a replaced file survives: the end of the process at any moment, or the system's as well.
enum class Survives { process, system };

// Readers and a crash at any moment see the old content or the new, whole. Where the target is a symbolic link, the
// file it leads to is replaced; the new one may be read and written by whom the old one let. The file beside it is
// gone afterwards, and with it those of others that were killed. After a fault, which names the target, the target is
// as it was. Used by one thread.
class FileReplacement final {
public:
    explicit FileReplacement(const std::filesystem::path& target);
    // Without commit(), removes what was written.
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Makes the file beside the target, once; first of all. A target that nobody may write is a fault, as is one that
    // is no file.
    [[nodiscard]] Outcome open();
    // After a fault of the two, nothing is to come but the end.
    [[nodiscard]] Outcome append(std::string_view bytes);
    [[nodiscard]] Outcome commit(Survives survives);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace Platform
