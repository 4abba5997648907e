// tembrel check: says every fault of programs, banks, presets and sequences.
#pragma once

#include "host/Command.h"

#include <optional>
#include <string>
#include <vector>

namespace Host {

class CheckCommand final : public Command {
public:
    explicit CheckCommand(CLI::App& commandLine);

    [[nodiscard]] const CLI::App& verb() const override { return *verb_; }
    [[nodiscard]] int run() override;

private:
    CLI::App* verb_;
    std::vector<std::string> files_; // and folders
    std::optional<std::string> data_;
};

} // namespace Host
