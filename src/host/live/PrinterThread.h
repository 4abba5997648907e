// A thread that writes to a file what others have put by for it.
#pragma once

#include "platform/AutoResetEvent.h"
#include "platform/Threads.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

namespace Host {

class PrinterThread final {
public:
    // `take` is called on the thread and appends what there is now to an empty text, which is written and flushed at
    // once. `file` outlives the thread; `name` is what debuggers show.
    PrinterThread(std::FILE* file, std::string name, std::function<void(std::string& text)> take);
    // Writes what was put by before.
    ~PrinterThread();
    PrinterThread(const PrinterThread&) = delete;
    PrinterThread& operator=(const PrinterThread&) = delete;

    // There is something to take. [any]
    void tell() noexcept { wake_.signal(); }
    // False once something could not be written. [any]
    [[nodiscard]] bool isGood() const noexcept { return good_.load(std::memory_order_relaxed); }
    // How many times something was written. [any]
    [[nodiscard]] std::uint64_t written() const noexcept { return written_.load(std::memory_order_relaxed); }

private:
    void work();

    std::FILE* file_;
    std::function<void(std::string&)> take_;
    Platform::AutoResetEvent wake_;
    std::atomic<bool> stopping_ = false;
    std::atomic<bool> good_ = true;
    std::atomic<std::uint64_t> written_ = 0;
    Platform::Thread thread_;
};

} // namespace Host
