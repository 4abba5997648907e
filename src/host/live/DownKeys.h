// The keys that are down, as far as the terminal has said so.
#pragma once

#include "host/live/KeyEvent.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace Host {

// Makes sense of what comes from outside: every key that goes down comes up once, and only then.
class DownKeys final {
public:
    // The event as it is to be played. A key that goes down while it is down repeats; one that repeats without being
    // down goes down; one that comes up without being down (it was pressed before the program began, or lifted by
    // liftAll) gives nothing.
    [[nodiscard]] std::optional<KeyEvent> admit(const KeyEvent& event);
    // All keys come up.
    [[nodiscard]] std::vector<KeyEvent> liftAll();

private:
    std::map<std::uint32_t, Key> keys_; // by code
};

} // namespace Host
