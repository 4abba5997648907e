// Outgoing messages of one port in the order of their times.
#pragma once

#include "host/live/MidiBytes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Host {

struct DueMessage {
    std::int64_t due = 0; // frame
    MidiBytes bytes;
};

// Messages of equal time stay in the order in which they came. Used by one thread; allocates nothing after
// construction. Messages come nearly in order, so that finding a message's place costs a step or two.
class DueQueue final {
public:
    explicit DueQueue(std::size_t capacity); // holds at least this many

    // False when it is full.
    [[nodiscard]] bool push(const DueMessage& message) noexcept;
    // The earliest, or null.
    [[nodiscard]] const DueMessage* front() const noexcept {
        return begin_ == end_ ? nullptr : &messages_[begin_ & mask()];
    }
    void pop() noexcept { ++begin_; } // only when there is a front
    void clear() noexcept { begin_ = end_; }
    [[nodiscard]] std::size_t size() const noexcept { return end_ - begin_; }

private:
    [[nodiscard]] std::size_t mask() const noexcept { return messages_.size() - 1; }

    std::vector<DueMessage> messages_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

} // namespace Host
