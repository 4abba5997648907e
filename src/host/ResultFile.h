// A file that the program makes: whole, or not there.
#pragma once

#include "platform/Result.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace Host {

// Written beside its target and put in the target's place at the end, where a link leads. A target that exists and is
// no regular file (a device, a pipe) is written directly; "-" is standard output. Used by one thread.
class ResultFile final {
public:
    explicit ResultFile(const std::string& target);
    // Without commit(), removes what was written.
    ~ResultFile();
    ResultFile(const ResultFile&) = delete;
    ResultFile& operator=(const ResultFile&) = delete;

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
    [[nodiscard]] bool isStandardOutput() const noexcept { return name_ == "-"; }
    [[nodiscard]] Platform::Fault fault(const std::string& reason) const;

    std::string name_;
    std::filesystem::path target_;
    std::filesystem::path written_; // the file beside the target, or the target
    std::ofstream file_;
    std::string firstError_;
    bool good_ = false;
    bool open_ = false;
};

} // namespace Host
