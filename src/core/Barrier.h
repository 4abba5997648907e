// A gate that one thread opens once and others wait for.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace Backend {

// May be destroyed as soon as a waiter has seen it open: the destructor waits for open() to have let go of it.
class Barrier final {
public:
    // `onOpen`, when given, is called once by the opening thread after isOpen() has become true: a clock that does
    // something else than wait() is woken so. It must neither block nor touch this barrier but through isOpen().
    explicit Barrier(std::function<void()> onOpen = {});
    ~Barrier();
    Barrier(const Barrier&) = delete;
    Barrier& operator=(const Barrier&) = delete;

    // Opening an open barrier does nothing. What the opener did before is visible to who sees the barrier open. [any]
    void open();
    [[nodiscard]] bool isOpen() const noexcept { return open_.load(std::memory_order_acquire); } // [any]
    void wait();                                                                                 // [any]
    // True when it opened within that time.
    [[nodiscard]] bool waitFor(std::chrono::nanoseconds time); // [any]

private:
    std::function<void()> onOpen_;
    std::mutex mutex_;
    std::condition_variable opened_;
    std::atomic<bool> open_{false};
};

} // namespace Backend
