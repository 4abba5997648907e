// The thread on which a clock runs.
#pragma once

#include "host/live/ClockWaker.h"
#include "platform/Threads.h"

#include <atomic>
#include <functional>
#include <memory>

namespace Host {

// Does a clock's round again and again, with the priority and the timers that a clock needs.
class ClockThread final {
public:
    // `round` may sleep as long as `waker` can wake it, which outlives the thread.
    ClockThread(std::function<void()> round, ClockWaker& waker);
    // As stop().
    ~ClockThread();
    ClockThread(const ClockThread&) = delete;
    ClockThread& operator=(const ClockThread&) = delete;

    // Once. [main]
    void start();
    // Wakes the clock and waits for the end of its round. Harmless when repeated. [main]
    void stop();

private:
    std::function<void()> round_;
    ClockWaker& waker_;
    std::atomic<bool> stopping_ = false;
    std::unique_ptr<Platform::Thread> thread_;
};

} // namespace Host
