// A file that the program makes: whole, or not there.
#pragma once

#include "platform/FileReplacement.h"
#include "platform/Result.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

namespace Host {

// A file is replaced (FileReplacement). A target that exists and is none (a device, a pipe) is written directly; "-" is
// standard output. Used by one thread.
class ResultFile final {
public:
    // Without commit(), what was written is removed with it.
    explicit ResultFile(const std::string& target);

    // Opens the file; a fault names the target.
    [[nodiscard]] Platform::Outcome open();
    // Appends. A failure is kept for commit(); isGood() shows it earlier.
    void write(std::string_view bytes);
    [[nodiscard]] bool isGood() const noexcept { return good_; }
    // Writes all to the target's place; nothing can be written afterwards.
    [[nodiscard]] Platform::Outcome commit();

    // A name for an intermediate file beside the target, to be removed by who uses it.
    [[nodiscard]] std::filesystem::path temporaryName() const;

private:
    [[nodiscard]] Platform::Outcome fail(const std::string& reason);

    std::string name_;
    std::optional<Platform::FileReplacement> replacement_;
    std::ofstream device_;
    std::ostream* direct_ = nullptr; // instead of a replacement
    std::string firstError_;
    bool good_ = false;
};

} // namespace Host
