// A performance script that is performed while it is being read.
#pragma once

#include "platform/AutoResetEvent.h"
#include "platform/Result.h"
#include "values/Ticks.h"

#include <cstdio>
#include <memory>
#include <optional>

namespace Backend {
class QelIF;
}

namespace Host {

class LivePlayer;

// Reads lines as they arrive and hands each in at its tick. Incoming messages are handed in a little earlier, stamped
// with their tick, and so are played in it; all else is done when its tick has come. A line whose tick has passed is
// handed in at once. After the last line the performance goes on until nothing sounds or is scheduled, at most `tail`.
class LiveScript final {
public:
    static constexpr std::int32_t tail = 7680; // ticks

    // `input` is read by a thread that may be stuck in it when the object goes; that thread then touches nothing else
    // any more. Player and backend outlive the object; `finished` is signalled in the end, and outlives it too.
    LiveScript(std::FILE* input, LivePlayer& player, Backend::QelIF& qel, Platform::AutoResetEvent& finished);
    ~LiveScript();
    LiveScript(const LiveScript&) = delete;
    LiveScript& operator=(const LiveScript&) = delete;

    // The tick of the script's tick 0: shortly after construction. [any]
    [[nodiscard]] Backend::Ticks start() const noexcept { return start_; }
    // How it ended: nothing before that, a fault when a line is wrong. [any]
    [[nodiscard]] std::optional<Platform::Outcome> outcome() const;

private:
    struct Reading;

    Backend::Ticks start_;
    std::shared_ptr<Reading> reading_;
};

} // namespace Host
