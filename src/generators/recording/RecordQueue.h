// The way from the clock to the recorder's thread.
#pragma once

#include "core/SpscRing.h"
#include "generators/recording/PlayedMessage.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

namespace Backend::Recording {

// Bounded: what does not fit is dropped and counted, and the clock never waits. The recorder is woken once; then it
// looks by itself until it finds nothing and parks.
class RecordQueue final {
public:
    // A quarter of a second at two million messages a second.
    static constexpr std::size_t defaultCapacity = 1 << 19;

    // `wake` is called on the clock thread and must not block; false: it could not wake now, and is called again for
    // the next message.
    explicit RecordQueue(std::function<bool()> wake, std::size_t capacity = defaultCapacity)
        : ring_(capacity), wake_(std::move(wake)) {}

    void push(const PlayedMessage& message) noexcept { // [clock]
        if (!ring_.push(message)) {
            dropped_.fetch_add(1, std::memory_order_relaxed);
        } else if (parked_.load(std::memory_order_relaxed)) {
            parked_.store(!wake_(), std::memory_order_relaxed);
        }
    }

    [[nodiscard]] bool pop(PlayedMessage& message) noexcept { return ring_.pop(message); } // [recorder]
    [[nodiscard]] bool isEmpty() const noexcept { return ring_.isEmpty(); }                // [any]
    // From now on the next message wakes. One that is pushed at this very moment may not: who parks looks once more
    // some time later, when every processor has seen it. [recorder]
    void park() noexcept { parked_.store(true, std::memory_order_relaxed); }
    void unpark() noexcept { parked_.store(false, std::memory_order_relaxed); } // [recorder]

    // In all. [any]
    [[nodiscard]] std::uint64_t dropped() const noexcept { return dropped_.load(std::memory_order_relaxed); }

private:
    SpscRing<PlayedMessage> ring_;
    std::function<bool()> wake_;
    alignas(64) std::atomic<bool> parked_ = true;
    std::atomic<std::uint64_t> dropped_ = 0;
};

} // namespace Backend::Recording
