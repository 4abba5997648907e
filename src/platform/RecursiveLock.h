// The lock under every critical section: recursive, and forgiving of a leave by a thread that does not hold it.
#pragma once

#include <memory>

namespace Platform {

class RecursiveLock final {
public:
    RecursiveLock();
    ~RecursiveLock();
    RecursiveLock(const RecursiveLock&) = delete;
    RecursiveLock& operator=(const RecursiveLock&) = delete;

    void enter() noexcept;                  // [any]
    [[nodiscard]] bool tryEnter() noexcept; // [any]
    // Does nothing when the calling thread does not hold the lock.
    void leave() noexcept; // [any]

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace Platform
