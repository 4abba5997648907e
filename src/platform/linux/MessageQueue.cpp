#include "platform/linux/MessageQueue.h"

#include "platform/Threads.h"
#include "platform/linux/Futex.h"

#include <cassert>

namespace Platform {
namespace {

constexpr std::size_t indexOf(std::uint64_t position) {
    return position % messageQueueCapacity;
}
constexpr std::uint32_t freeTurn(std::uint64_t position) {
    return static_cast<std::uint32_t>(position / messageQueueCapacity * 2);
}

} // namespace

void MessageQueue::open(std::uint32_t id, const std::function<void()>* wake) {
    assert(id != 0 && !isOpen());
    // Every page is touched here, so that a real-time poster meets no page fault.
    cells_ = std::make_unique<Cell[]>(messageQueueCapacity);
    wake_ = wake;
    head_ = 0;
    tail_.store(0, std::memory_order_relaxed);
    // Posters with ids of the past may be coming and going: the counter keeps what it holds.
    state_.fetch_add(std::uint64_t{id} << 32, std::memory_order_release);
}

void MessageQueue::close() noexcept {
    if (!isOpen()) {
        return;
    }
    state_.fetch_and(0x7FFF'FFFFULL, std::memory_order_acq_rel);
    // Posters are inside for some nanoseconds; one that was interrupted there, below us in priority, needs us to
    // sleep before it can go on.
    for (int tries = 0; (state_.load(std::memory_order_acquire) & 0x7FFF'FFFFULL) != 0; ++tries) {
        sleepMilliseconds(tries < 100 ? 0 : 1);
    }
    cells_.reset();
    wake_ = nullptr;
}

bool MessageQueue::post(std::uint32_t id, const ThreadMessage& message) noexcept {
    const std::uint64_t entered = state_.fetch_add(1, std::memory_order_acquire);
    const bool posted = (entered >> 32) == id && append(message);
    if (posted && wake_ != nullptr) {
        (*wake_)();
    }
    const std::uint64_t left = state_.fetch_sub(1, std::memory_order_acq_rel);
    // Either the owner's going to sleep came before this, and is seen here, or it comes after, and the owner sees
    // the message. The poster that clears the mark is the one that wakes.
    if (posted && (left & ownerSleeps) != 0 &&
        (state_.fetch_and(~ownerSleeps, std::memory_order_relaxed) & ownerSleeps) != 0) {
        wakeOwner();
    }
    return posted;
}

bool MessageQueue::append(const ThreadMessage& message) noexcept {
    std::uint64_t position = tail_.load(std::memory_order_relaxed);
    for (;;) {
        Cell& cell = cells_[indexOf(position)];
        if (cell.turn.load(std::memory_order_acquire) == freeTurn(position)) {
            if (tail_.compare_exchange_weak(position, position + 1, std::memory_order_relaxed)) {
                cell.id = message.id;
                cell.wParam = message.wParam;
                cell.lParam = message.lParam;
                cell.turn.store(freeTurn(position) + 1, std::memory_order_release);
                return true;
            }
            continue;
        }
        const std::uint64_t now = tail_.load(std::memory_order_relaxed);
        if (now == position) {
            return false; // the cell still holds the message of the lap before: full
        }
        position = now;
    }
}

bool MessageQueue::headIsReady() const noexcept {
    return cells_[indexOf(head_)].turn.load(std::memory_order_acquire) == freeTurn(head_) + 1;
}

bool MessageQueue::peek(ThreadMessage& message, bool remove) noexcept {
    if (!headIsReady()) {
        return false;
    }
    Cell& cell = cells_[indexOf(head_)];
    message = {cell.id, cell.wParam, cell.lParam};
    if (remove) {
        cell.turn.store(freeTurn(head_) + 2, std::memory_order_release);
        ++head_;
    }
    return true;
}

void MessageQueue::waitForMessage() noexcept {
    const std::uint32_t wakes = wakes_.load(std::memory_order_relaxed);
    state_.fetch_or(ownerSleeps, std::memory_order_acq_rel);
    if (!headIsReady()) {
        futexWait(wakes_, wakes);
    }
    state_.fetch_and(~ownerSleeps, std::memory_order_relaxed);
}

void MessageQueue::wakeOwner() noexcept {
    wakes_.fetch_add(1, std::memory_order_relaxed);
    futexWakeOne(wakes_);
}

} // namespace Platform
