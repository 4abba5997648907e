// The verb that plays a file into files.
#pragma once

#include "host/Command.h"
#include "host/EventSink.h"
#include "host/Performance.h"
#include "host/Session.h"
#include "platform/Result.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Host {

// tembrel render INPUT: through the real backend, as fast as the machine can.
class RenderCommand final : public Command {
public:
    explicit RenderCommand(CLI::App& commandLine);
    [[nodiscard]] const CLI::App& verb() const override { return *verb_; }
    [[nodiscard]] int run() override;

private:
    [[nodiscard]] Platform::Outcome render();
    [[nodiscard]] Platform::Result<std::unique_ptr<Performance>> openInput() const;
    [[nodiscard]] Platform::Result<std::vector<std::unique_ptr<EventSink>>> openSinks() const;

    CLI::App* verb_;
    SessionOptions session_;
    std::string input_;
    std::optional<std::string> events_;
    std::optional<std::string> output_;
    int inputs_ = 1;
    int outputs_ = 1;
    std::int32_t tail_ = 7680;
    bool statistics_ = false;
};

} // namespace Host
