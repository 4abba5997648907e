#include "platform/ThreadMessages.h"

#include "platform/linux/QueueTable.h"

#include <system_error>

namespace Platform {
namespace {

// Set by postQuitMessage. It is no message in the queue: it needs no room there and comes after what is there.
thread_local constinit bool quitIsPosted = false;

// The calling thread's queue once it has one: taking a message must not cost a look-up.
thread_local constinit MessageQueue* knownQueue = nullptr;

MessageQueue& ownQueue() {
    if (knownQueue == nullptr) {
        createMessageQueue();
        knownQueue = &threadQueues().queue(currentThreadId());
    }
    return *knownQueue;
}

} // namespace

bool postThreadMessage(ThreadId thread, const ThreadMessage& message) noexcept {
    return thread != 0 && threadQueues().queue(thread).post(thread, message);
}

void createMessageQueue() {
    const ThreadId id = currentThreadId();
    if (id == 0) {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    }
    MessageQueue& queue = threadQueues().queue(id);
    if (!queue.isOpen()) {
        queue.open(id);
    }
}

bool peekThreadMessage(ThreadMessage& message, bool remove) {
    if (ownQueue().peek(message, remove)) {
        return true;
    }
    if (!quitIsPosted) {
        return false;
    }
    quitIsPosted = !remove;
    message = {quitMessage, 0, 0};
    return true;
}

bool getThreadMessage(ThreadMessage& message) {
    while (!peekThreadMessage(message, true)) {
        ownQueue().waitForMessage();
    }
    return message.id != quitMessage;
}

void postQuitMessage() {
    quitIsPosted = true;
}

} // namespace Platform
