// Writes texts that others have made while the program plays.
#pragma once

#include "host/live/PrinterThread.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>

namespace Host {

class TextPrinter final {
public:
    // What waits to be written holds at most so many bytes.
    static constexpr std::size_t room = 4 * 1024 * 1024;

    // `file` outlives the printer, whose end writes what was given to it before. `beforeText` is written before each
    // text.
    explicit TextPrinter(std::FILE* file, std::string beforeText = {});

    // Comes back at once; what finds no room is dropped and counted. [any but clock]
    void print(const std::string& text);

    [[nodiscard]] std::uint64_t dropped() const noexcept { return dropped_.load(std::memory_order_relaxed); } // [any]
    // How many times something was written. [any]
    [[nodiscard]] std::uint64_t written() const noexcept { return thread_.written(); }

private:
    std::string beforeText_;
    std::mutex mutex_;
    std::string waiting_; // under the mutex
    std::atomic<std::uint64_t> dropped_ = 0;
    PrinterThread thread_; // ends first
};

} // namespace Host
