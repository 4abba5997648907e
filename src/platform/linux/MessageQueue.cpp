#include "platform/linux/MessageQueue.h"

#include "platform/Threads.h"
#include "platform/linux/Futex.h"

#include <cassert>
#include <utility>

namespace Platform {
namespace {

constexpr auto capacity = static_cast<std::uint32_t>(messageQueueCapacity);
// Positions count on over the laps of the ring, and begin again after so many laps that no poster can sleep through.
constexpr std::uint32_t positions = 200'000 * capacity;
static_assert(positions < (1U << 31));

constexpr std::uint64_t ownerSleeps = 1;
constexpr std::uint32_t idOf(std::uint64_t word) {
    return static_cast<std::uint32_t>(word >> 32);
}
constexpr std::uint32_t tailOf(std::uint64_t word) {
    return static_cast<std::uint32_t>(word) >> 1;
}
constexpr std::uint64_t wordOf(std::uint32_t id, std::uint32_t tail) {
    return std::uint64_t{id} << 32 | tail << 1;
}

constexpr std::uint32_t after(std::uint32_t position) {
    return position + 1 == positions ? 0 : position + 1;
}
constexpr std::uint32_t distance(std::uint32_t from, std::uint32_t to) {
    return to >= from ? to - from : to + (positions - from);
}
constexpr std::uint32_t lapOf(std::uint32_t position) {
    return position / capacity + 1;
}

// Waits a moment for a thread that is between two of its instructions. It may have been interrupted there, below us
// in priority: then it needs us to sleep before it can go on.
void waitAMoment(int tries) noexcept {
    sleepMilliseconds(tries < 100 ? 0 : 1);
}

} // namespace

void MessageQueue::open(std::uint32_t id, const std::function<void()>* wake) {
    assert(id != 0 && !isOpen());
    // Every page is touched here, so that a real-time poster meets no page fault.
    cells_ = std::make_unique<Cell[]>(capacity);
    wake_ = wake;
    head_.store(0, std::memory_order_relaxed);
    word_.store(wordOf(id, 0), std::memory_order_release);
}

void MessageQueue::close() noexcept {
    if (!isOpen()) {
        return;
    }
    const std::uint32_t tail = tailOf(word_.exchange(0, std::memory_order_acq_rel));
    for (std::uint32_t position = head_.load(std::memory_order_relaxed); position != tail; position = after(position)) {
        for (int tries = 0; !isPublished(position); ++tries) {
            waitAMoment(tries);
        }
    }
    for (int tries = 0; postsWithWake_.load(std::memory_order_acquire) != 0; ++tries) {
        waitAMoment(tries);
    }
    cells_.reset();
    wake_ = nullptr;
}

bool MessageQueue::hasRoom(std::uint64_t word) noexcept {
    const std::uint64_t known = knownHead_.load(std::memory_order_acquire);
    if (idOf(known) == idOf(word) && distance(static_cast<std::uint32_t>(known), tailOf(word)) < capacity) {
        return true;
    }
    const std::uint32_t head = head_.load(std::memory_order_acquire);
    knownHead_.store(std::uint64_t{idOf(word)} << 32 | head, std::memory_order_release);
    return distance(head, tailOf(word)) < capacity;
}

bool MessageQueue::post(std::uint32_t id, const ThreadMessage& message) noexcept {
    // Until a position is claimed the cells may be gone: nothing but this object itself is looked at.
    std::uint64_t word = word_.load(std::memory_order_acquire);
    for (;;) {
        if (idOf(word) != id) {
            return false;
        }
        if (hasRoom(word)) {
            if (word_.compare_exchange_weak(word, wordOf(id, after(tailOf(word))), std::memory_order_acq_rel,
                                            std::memory_order_acquire)) {
                break;
            }
        } else {
            // Full, unless the word was out of date when the head was read.
            const std::uint64_t looked = std::exchange(word, word_.load(std::memory_order_acquire));
            if (word == looked) {
                return false;
            }
        }
    }
    const std::uint32_t position = tailOf(word);
    Cell& cell = cells_[position % capacity];
    cell.id = message.id;
    cell.wParam = message.wParam;
    cell.lParam = message.lParam;
    cell.publishedLap.store(lapOf(position), std::memory_order_release);
    // From here on the queue may be closed.
    if ((word & ownerSleeps) != 0) {
        wakes_.fetch_add(1, std::memory_order_relaxed);
        futexWakeOne(wakes_);
    }
    return true;
}

bool MessageQueue::postAndWake(std::uint32_t id, const ThreadMessage& message) noexcept {
    postsWithWake_.fetch_add(1, std::memory_order_relaxed);
    const bool posted = post(id, message);
    if (posted && wake_ != nullptr) {
        (*wake_)();
    }
    postsWithWake_.fetch_sub(1, std::memory_order_release);
    return posted;
}

bool MessageQueue::isPublished(std::uint32_t position) const noexcept {
    return cells_[position % capacity].publishedLap.load(std::memory_order_acquire) == lapOf(position);
}

bool MessageQueue::peek(ThreadMessage& message, bool remove) noexcept {
    const std::uint32_t head = head_.load(std::memory_order_relaxed);
    if (!isPublished(head)) {
        return false;
    }
    const Cell& cell = cells_[head % capacity];
    message = {cell.id, cell.wParam, cell.lParam};
    if (remove) {
        head_.store(after(head), std::memory_order_release);
    }
    return true;
}

void MessageQueue::waitForMessage() noexcept {
    const std::uint32_t head = head_.load(std::memory_order_relaxed);
    for (int tries = 0; !isPublished(head); ++tries) {
        const std::uint32_t wakes = wakes_.load(std::memory_order_relaxed);
        std::uint64_t word = word_.load(std::memory_order_acquire);
        if (tailOf(word) != head) {
            waitAMoment(tries); // claimed, and about to be published
        } else if (word_.compare_exchange_strong(word, word | ownerSleeps, std::memory_order_acq_rel)) {
            futexWait(wakes_, wakes);
        }
    }
}

} // namespace Platform
