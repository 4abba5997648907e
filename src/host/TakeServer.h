// Lets "tembrel take" reach the record of this program.
#pragma once

#include "platform/LocalServer.h"

#include <memory>

namespace Backend::Recording {
class RetroRecord;
}

namespace Host {

// Answers on a thread of its own while it lives, which is not longer than the record's. Does nothing when nothing is
// recorded.
class TakeServer final {
public:
    explicit TakeServer(Backend::Recording::RetroRecord& record);
    ~TakeServer();
    TakeServer(const TakeServer&) = delete;
    TakeServer& operator=(const TakeServer&) = delete;

    // Why nobody will be answered; then takes come from the buffers, once the program has ended.
    [[nodiscard]] Platform::Outcome state() const { return server_ ? server_->state() : Platform::success(); }

private:
    std::unique_ptr<Platform::LocalServer> server_;
};

} // namespace Host
