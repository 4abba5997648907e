// Lets one thread take an object away from another that uses it without locks.
#pragma once

#include "platform/Threads.h"

#include <atomic>

namespace Host {

// The user enters, loads the pointer, uses the object, leaves. Whoever takes the object away stores another pointer
// and then waits until the user is not inside with the old one. Sequential consistency of these accesses makes sure
// that a user who is not seen inside sees the new pointer.
class ExchangeGuard final {
public:
    void enter() noexcept { inside_.store(true); }                             // [user]
    void leave() noexcept { inside_.store(false, std::memory_order_release); } // [user]

    // Gives up after some 100 ms: false, the object must then be kept. [taker]
    [[nodiscard]] bool waitUntilOutside() const noexcept {
        for (int tries = 0; tries < 100; ++tries) {
            if (!inside_.load()) {
                return true;
            }
            Platform::sleepMilliseconds(1);
        }
        return !inside_.load();
    }

private:
    std::atomic<bool> inside_ = false;
};

} // namespace Host
