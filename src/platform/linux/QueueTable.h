// Fixed tables of message queues: an id names a slot and the slot's generation, so that finding a queue is one
// index, and an id of the past finds nothing.
#pragma once

#include "platform/linux/MessageQueue.h"

#include <array>
#include <cstdint>
#include <mutex>

namespace Platform {

// 2 to the power of `slotBits` slots. Meant for objects of static storage that are never destroyed: posters of
// other threads may come as long as the process lives.
template <unsigned slotBits> class QueueTable final {
public:
    constexpr QueueTable() noexcept : slots_() {}
    ~QueueTable() {} // the slots stay as they are
    QueueTable(const QueueTable&) = delete;
    QueueTable& operator=(const QueueTable&) = delete;

    // A new id, with its queue closed; 0 when all slots are taken. [any]
    [[nodiscard]] std::uint32_t acquire() noexcept {
        const std::lock_guard guard(mutex_);
        // Slots are reused in turn, so that an id comes back as late as possible.
        for (std::uint32_t tries = 0; tries < slotCount; ++tries) {
            const std::uint32_t index = next_;
            next_ = (next_ + 1) & slotMask;
            Slot& slot = slots_[index];
            if (!slot.taken) {
                slot.taken = true;
                slot.generation = slot.generation == lastGeneration ? 1 : slot.generation + 1;
                return (slot.generation << slotBits) | index;
            }
        }
        return 0;
    }
    // Closes the queue and gives the slot back. [owner of the queue]
    void release(std::uint32_t id) noexcept {
        queue(id).close();
        const std::lock_guard guard(mutex_);
        slots_[id & slotMask].taken = false;
    }
    // The queue in the slot of that id, which may be open for another id or closed. [any]
    [[nodiscard]] MessageQueue& queue(std::uint32_t id) noexcept { return slots_[id & slotMask].queue; }

private:
    static constexpr std::uint32_t slotCount = 1U << slotBits;
    static constexpr std::uint32_t slotMask = slotCount - 1;
    static constexpr std::uint32_t lastGeneration = (1U << (32 - slotBits)) - 1;

    struct Slot {
        MessageQueue queue;
        std::uint32_t generation = 0; // under the mutex, like the next
        bool taken = false;
    };

    std::mutex mutex_;
    std::uint32_t next_ = 0;
    union {
        std::array<Slot, slotCount> slots_;
    };
};

using ThreadQueues = QueueTable<12>;
// The queues of all threads that have an id, by that id.
[[nodiscard]] ThreadQueues& threadQueues() noexcept;

} // namespace Platform
