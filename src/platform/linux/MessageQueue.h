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
// A ring of cells in the manner of the well-known bounded queue: each cell carries a turn that says whose it is.
// One word holds the id that the queue is open for, whether the owner sleeps, and how many posters are inside:
// entering and leaving change that word in one step each, which orders them against the owner's going to sleep
// and against closing.
class MessageQueue final {
public:
    constexpr MessageQueue() = default;
    MessageQueue(const MessageQueue&) = delete;
    MessageQueue& operator=(const MessageQueue&) = delete;

    // Opens the queue for an id that is not 0. Each poster calls `wake`, when there is one, after its post; it must
    // live until close() has returned. Throws std::bad_alloc. [owner]
    void open(std::uint32_t id, const std::function<void()>* wake = nullptr);
    // Refuses further posts, waits for the posters inside, forgets the messages. [owner]
    void close() noexcept;
    [[nodiscard]] bool isOpen() const noexcept { return cells_ != nullptr; } // [owner]

    // False when the queue is not open for that id or is full. [any]
    [[nodiscard]] bool post(std::uint32_t id, const ThreadMessage& message) noexcept;

    // The oldest message, if there is one. [owner]
    [[nodiscard]] bool peek(ThreadMessage& message, bool remove) noexcept;
    // Sleeps until there may be a message. [owner]
    void waitForMessage() noexcept;

private:
    // A cell is free for the lap n of the ring at the turn 2n, and holds a message of that lap at 2n + 1.
    struct Cell {
        std::atomic<std::uint32_t> turn{0};
        std::uint32_t id = 0;
        std::uintptr_t wParam = 0;
        std::intptr_t lParam = 0;
    };
    static constexpr std::uint64_t ownerSleeps = 1ULL << 31; // above: the id; below: the number of posters inside

    [[nodiscard]] bool append(const ThreadMessage& message) noexcept;
    [[nodiscard]] bool headIsReady() const noexcept;
    void wakeOwner() noexcept;

    // Written by posters:
    alignas(64) std::atomic<std::uint64_t> state_{0};
    std::atomic<std::uint64_t> tail_{0};
    std::atomic<std::uint32_t> wakes_{0}; // what the owner sleeps on
    // Written by the owner, and by nobody while the queue is open:
    alignas(64) std::unique_ptr<Cell[]> cells_;
    const std::function<void()>* wake_ = nullptr;
    // The owner's own:
    alignas(64) std::uint64_t head_ = 0;
};

} // namespace Platform
