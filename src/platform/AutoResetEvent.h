// An event that releases one waiter a signal and resets itself.
#pragma once

#include <chrono>
#include <memory>

namespace Platform {

// Starts not signalled. Signals do not count up: a second one before a wait is the same as one.
class AutoResetEvent final {
public:
    AutoResetEvent();
    ~AutoResetEvent();
    AutoResetEvent(const AutoResetEvent&) = delete;
    AutoResetEvent& operator=(const AutoResetEvent&) = delete;

    void signal() noexcept; // [any]
    void wait() noexcept;   // [any] without time-out
    // True when signalled within that time.
    [[nodiscard]] bool waitFor(std::chrono::nanoseconds time) noexcept; // [any]

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace Platform
