// tembrel import: files of version 2.
#pragma once

#include "host/Command.h"

#include <string>

namespace Host {

class ImportCommand final : public Command {
public:
    explicit ImportCommand(CLI::App& commandLine);

    [[nodiscard]] const CLI::App& verb() const override { return *verb_; }
    [[nodiscard]] int run() override;

private:
    CLI::App* verb_;
    std::string source_;
    std::string destination_;
};

} // namespace Host
