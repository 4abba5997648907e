// A thread of the backend with a message queue and one job.
#pragma once

#include "platform/ThreadMessages.h"
#include "platform/Threads.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Backend {

// Starts suspended and is then let go; ends on its stop message, having handled what was posted before. [backend]
class WorkerThread final {
public:
    static constexpr std::uint32_t STOP_MESSAGE = Platform::applicationMessage + 101;

    // `begin` runs first, on the new thread; `handle` gets each message, numbered STOP_MESSAGE + 1 upward.
    WorkerThread(std::string name, std::function<void()> begin,
                 std::function<void(const Platform::ThreadMessage&)> handle);
    ~WorkerThread();
    WorkerThread(const WorkerThread&) = delete;
    WorkerThread& operator=(const WorkerThread&) = delete;

    // False while the thread has no queue yet, or a full one. While the thread is there. [any]
    [[nodiscard]] bool post(const Platform::ThreadMessage& message) noexcept;

    // Posts the stop message, trying again every 10 ms, and waits for the thread to end. Harmless when repeated.
    void stop();

private:
    void run();

    std::string name_;
    std::function<void()> begin_;
    std::function<void(const Platform::ThreadMessage&)> handle_;
    std::unique_ptr<Platform::Thread> thread_;
};

} // namespace Backend
