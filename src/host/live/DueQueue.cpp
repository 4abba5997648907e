#include "host/live/DueQueue.h"

#include <bit>

namespace Host {

DueQueue::DueQueue(std::size_t capacity) : messages_(std::bit_ceil(capacity)) {}

bool DueQueue::push(const DueMessage& message) noexcept {
    if (size() == messages_.size()) {
        return false;
    }
    std::size_t place = end_++;
    while (place != begin_ && messages_[(place - 1) & mask()].due > message.due) {
        messages_[place & mask()] = messages_[(place - 1) & mask()];
        --place;
    }
    messages_[place & mask()] = message;
    return true;
}

} // namespace Host
