// Thread message queues: each thread owns one, any thread posts to it by the owner's id.
#pragma once

#include "platform/Threads.h"

#include <cstddef>
#include <cstdint>

namespace Platform {

// One message: its number and two parameters, whose meaning belongs to the number.
struct ThreadMessage {
    std::uint32_t id = 0; // up to 0xFFFF
    std::uintptr_t wParam = 0;
    std::intptr_t lParam = 0;
};

// The first number that an application may use for messages of its own.
inline constexpr std::uint32_t applicationMessage = 0x8000;
// The message that ends a message loop.
inline constexpr std::uint32_t quitMessage = 0x0012;
// A queue holds at most this many messages.
inline constexpr std::size_t messageQueueCapacity = 10'000;
// Milliseconds after which who may wait tries a full queue again.
inline constexpr unsigned postRetryMilliseconds = 10;

// Appends a message to a thread's queue. False while the thread has no queue (unknown or ended threads never
// have one) or its queue is full. Never blocks for longer than the queue's own lock; allocates nothing. [any]
[[nodiscard]] bool postThreadMessage(ThreadId thread, const ThreadMessage& message) noexcept;

// Gives the calling thread its queue, if it has none yet. Taking and peeking messages do so, too. The queue ends with
// its thread. Throws when the system has none to give.
void createMessageQueue();

// Takes the oldest message, waiting for one without time-out. False when that message is the quit message.
[[nodiscard]] bool getThreadMessage(ThreadMessage& message);

// The oldest message, if there is one, without waiting; it stays in the queue unless `remove`.
// Unlike getThreadMessage it reports the quit message like any other.
[[nodiscard]] bool peekThreadMessage(ThreadMessage& message, bool remove);

// Posts the quit message to the calling thread. It finds room in a full queue and comes after all messages that are
// in the queue when it is taken; a quit message sent by postThreadMessage keeps its place among the others.
void postQuitMessage();

} // namespace Platform
