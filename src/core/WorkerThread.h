// A thread with a message queue and one job.
#pragma once

#include "platform/AutoResetEvent.h"
#include "platform/ThreadMessages.h"
#include "platform/Threads.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Backend {

// Where MessageManagerMaster serves many managers, this serves one handler. What it uses outlives it.
class WorkerThread final {
public:
    // Ends the thread as soon as it is taken from the queue.
    static constexpr std::uint32_t STOP_MESSAGE = Platform::applicationMessage + 101;

    // `name` is what debuggers show. `begin` runs first, on the new thread; `handle` gets each message, numbered
    // STOP_MESSAGE + 1 upward.
    WorkerThread(std::string name, std::function<void()> begin,
                 std::function<void(const Platform::ThreadMessage&)> handle);
    // As stop().
    ~WorkerThread();
    WorkerThread(const WorkerThread&) = delete;
    WorkerThread& operator=(const WorkerThread&) = delete;

    // Creates the thread; when this is back, it has its queue. It may be started again when it has been stopped.
    // [owner]
    void start();
    // Handles what was posted before, ends the thread and waits for its end. Harmless when repeated. [owner]
    void stop();
    [[nodiscard]] bool isRunning() const noexcept { return threadId_ != 0; } // [any] from start() to stop()
    [[nodiscard]] bool isCurrentThread() const noexcept;                     // [any]
    // One try: false while the queue is full, and when the thread is not running. [any]
    [[nodiscard]] bool tryPost(const Platform::ThreadMessage& message) noexcept;
    // Tries again every 10 ms while the queue is full; false, and the message is dropped, when the thread is not
    // running. [any but the thread itself]
    bool post(const Platform::ThreadMessage& message);

private:
    void run(Platform::AutoResetEvent& ready);

    std::string name_;
    std::function<void()> begin_;
    std::function<void(const Platform::ThreadMessage&)> handle_;
    std::unique_ptr<Platform::Thread> thread_;
    std::atomic<Platform::ThreadId> threadId_ = 0;
};

} // namespace Backend
