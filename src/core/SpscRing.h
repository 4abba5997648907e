// A queue of fixed size between two threads, without locks.
#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <vector>

namespace Backend {

// One thread pushes, one pops (several may take turns if something else orders them). Nothing is allocated after
// construction.
template <typename Item> class SpscRing final {
public:
    // Holds at least this many.
    explicit SpscRing(std::size_t capacity) : items_(std::bit_ceil(capacity)) {}

    // False when it is full. [pusher]
    [[nodiscard]] bool push(const Item& item) noexcept {
        const std::size_t end = end_.load(std::memory_order_relaxed);
        if (end - seenBegin_ == items_.size()) {
            seenBegin_ = begin_.load(std::memory_order_acquire);
            if (end - seenBegin_ == items_.size()) {
                return false;
            }
        }
        items_[end & (items_.size() - 1)] = item;
        end_.store(end + 1, std::memory_order_release);
        return true;
    }
    // False when it is empty. [popper]
    [[nodiscard]] bool pop(Item& item) noexcept {
        const std::size_t begin = begin_.load(std::memory_order_relaxed);
        if (begin == seenEnd_) {
            seenEnd_ = end_.load(std::memory_order_acquire);
            if (begin == seenEnd_) {
                return false;
            }
        }
        item = items_[begin & (items_.size() - 1)];
        begin_.store(begin + 1, std::memory_order_release);
        return true;
    }
    [[nodiscard]] bool isEmpty() const noexcept { // [any]
        return begin_.load(std::memory_order_acquire) == end_.load(std::memory_order_acquire);
    }

private:
    std::vector<Item> items_;
    // What the other side has done is looked at only when what was seen of it last does not suffice: each look is a
    // cache line fetched from another core.
    alignas(64) std::atomic<std::size_t> begin_ = 0;
    std::size_t seenEnd_ = 0; // by the popper
    alignas(64) std::atomic<std::size_t> end_ = 0;
    std::size_t seenBegin_ = 0; // by the pusher
};

} // namespace Backend
