// The queue behind an id: many threads post, the one thread that owns it takes. Posting never blocks.
#pragma once

#include "platform/ThreadMessages.h"

#include <atomic>
#include <functional>
#include <memory>

namespace Platform {

// Lives in a table that is never freed, so that posters may try any id at any time. A queue is opened for an id,
// used, closed, and then opened for another one.
//
// A ring of cells. One word holds the id that the queue is open for, the next position to write, and whether the
// owner sleeps: a poster claims a position by one exchange of that word, fills its cell and publishes it. Whoever
// claims a position while the owner sleeps takes the mark away and wakes the owner.
class MessageQueue final {
public:
    constexpr MessageQueue() = default;
    MessageQueue(const MessageQueue&) = delete;
    MessageQueue& operator=(const MessageQueue&) = delete;

    // Opens the queue for an id that is not 0. postAndWake calls `wake`, when there is one; it must live until close()
    // has returned. Throws std::bad_alloc. [owner]
    void open(std::uint32_t id, const std::function<void()>* wake = nullptr);
    // Refuses further posts, waits for those under way, forgets the messages. [owner]
    void close() noexcept;
    [[nodiscard]] bool isOpen() const noexcept { return cells_ != nullptr; } // [owner]

    // False when the queue is not open for that id or is full. [any]
    [[nodiscard]] bool post(std::uint32_t id, const ThreadMessage& message) noexcept;
    [[nodiscard]] bool postAndWake(std::uint32_t id, const ThreadMessage& message) noexcept;

    // The oldest message, if there is one. [owner]
    [[nodiscard]] bool peek(ThreadMessage& message, bool remove) noexcept;
    // Returns when there is a message. [owner]
    void waitForMessage() noexcept;

private:
    struct Cell {
        std::atomic<std::uint32_t> publishedLap{0}; // the lap of the ring, counted from 1, whose message is here
        std::uint32_t id = 0;
        std::uintptr_t wParam = 0;
        std::intptr_t lParam = 0;
    };

    [[nodiscard]] bool hasRoom(std::uint64_t word) noexcept;
    [[nodiscard]] bool isPublished(std::uint32_t position) const noexcept;

    // Written by posters. From the highest bit: the id (32 bits), the position to write next (31), the owner sleeps
    // (1).
    alignas(64) std::atomic<std::uint64_t> word_{0};
    // The id, and a head that is not ahead of the real one: spares posters the owner's cache line.
    std::atomic<std::uint64_t> knownHead_{0};
    std::atomic<std::uint32_t> wakes_{0};         // what the owner sleeps on
    std::atomic<std::uint32_t> postsWithWake_{0}; // under way
    // Written by the owner; the first two only while the queue is closed:
    alignas(64) std::unique_ptr<Cell[]> cells_;
    const std::function<void()>* wake_ = nullptr;
    std::atomic<std::uint32_t> head_{0}; // the position to read next
};

} // namespace Platform
