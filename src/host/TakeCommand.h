// The verb that saves what was played.
#pragma once

#include "host/Command.h"
#include "host/TakeTalk.h"
#include "platform/Result.h"

#include <optional>
#include <string>

namespace Host {

// tembrel take: the record of the program that runs, or, when none does, of the last one.
class TakeCommand final : public Command {
public:
    explicit TakeCommand(CLI::App& commandLine);
    [[nodiscard]] const CLI::App& verb() const override { return *verb_; }
    [[nodiscard]] int run() override;

private:
    [[nodiscard]] Platform::Result<TakeAnswer> ask(const TakeQuestion& question) const;

    CLI::App* verb_;
    std::optional<std::string> target_;
    std::optional<std::string> data_;
    std::optional<int> fromLast_;
    bool list_ = false;
    bool previous_ = false;
};

} // namespace Host
