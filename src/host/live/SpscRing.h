// A queue of fixed size between two threads, without locks.
#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <vector>

namespace Host {

// One thread pushes, one pops (several may take turns if something else orders them). Nothing is allocated after
// construction.
template <typename Item> class SpscRing final {
public:
    // Holds at least this many.
    explicit SpscRing(std::size_t capacity) : items_(std::bit_ceil(capacity)) {}

    // False when it is full. [pusher]
    [[nodiscard]] bool push(const Item& item) noexcept {
        const std::size_t end = end_.load(std::memory_order_relaxed);
        if (end - begin_.load(std::memory_order_acquire) == items_.size()) {
            return false;
        }
        items_[end & (items_.size() - 1)] = item;
        end_.store(end + 1, std::memory_order_release);
        return true;
    }
    // False when it is empty. [popper]
    [[nodiscard]] bool pop(Item& item) noexcept {
        const std::size_t begin = begin_.load(std::memory_order_relaxed);
        if (begin == end_.load(std::memory_order_acquire)) {
            return false;
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
    alignas(64) std::atomic<std::size_t> begin_ = 0;
    alignas(64) std::atomic<std::size_t> end_ = 0;
};

} // namespace Host
