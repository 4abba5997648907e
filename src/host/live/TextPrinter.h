// Writes texts that others have made while the program plays.
#pragma once

#include "platform/AutoResetEvent.h"
#include "platform/Threads.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>

namespace Host {

// Each text is written and flushed by a thread of its own.
class TextPrinter final {
public:
    // What waits to be written holds at most so many bytes.
    static constexpr std::size_t room = 4 * 1024 * 1024;

    // `file` outlives the printer. `beforeText` is written before each text.
    explicit TextPrinter(std::FILE* file, std::string beforeText = {});
    // Writes what was given to it before.
    ~TextPrinter();
    TextPrinter(const TextPrinter&) = delete;
    TextPrinter& operator=(const TextPrinter&) = delete;

    // Comes back at once; what finds no room is dropped and counted. [any but clock]
    void print(const std::string& text);

    [[nodiscard]] std::uint64_t dropped() const noexcept { return dropped_.load(std::memory_order_relaxed); } // [any]
    // How many times something was written. [any]
    [[nodiscard]] std::uint64_t written() const noexcept { return written_.load(std::memory_order_relaxed); }

private:
    void work();

    std::FILE* file_;
    std::string beforeText_;
    std::mutex mutex_;
    std::string waiting_; // under the mutex
    Platform::AutoResetEvent wake_;
    std::atomic<bool> stopping_ = false;
    std::atomic<std::uint64_t> dropped_ = 0;
    std::atomic<std::uint64_t> written_ = 0;
    std::unique_ptr<Platform::Thread> thread_;
};

} // namespace Host
