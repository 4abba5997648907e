// Window messages: anything that shows something is an endpoint to which any thread may post.
#pragma once

#include "platform/ThreadMessages.h"

#include <functional>

namespace Platform {

struct WindowTag;
// Names an endpoint; null names none.
using WindowHandle = WindowTag*;

// The numbers that may be posted to an endpoint; those below belong to the system.
[[nodiscard]] constexpr bool isWindowMessage(std::uint32_t id) noexcept {
    return id >= applicationMessage && id <= 0xFFFF;
}

// Creates an endpoint that belongs to the calling thread. What is posted to it is given to `handler` on that
// thread, in the order of posting, whenever the thread dispatches. `wake`, when given, is called by each poster
// after its post and must not block: a toolkit's loop uses it to have dispatchWindowMessages called. An endpoint that
// is still there when its thread ends is removed with the thread. Throws when the system has no endpoint to give.
[[nodiscard]] WindowHandle createWindowEndpoint(std::function<void(const ThreadMessage&)> handler,
                                                std::function<void()> wake = {});

// Removes an endpoint of the calling thread; messages that were not yet dispatched are lost.
void destroyWindowEndpoint(WindowHandle window);

// Posts a message; false, and nothing else, when the endpoint does not exist or holds messageQueueCapacity
// messages, or the number is none of an application. [any]
bool postWindowMessage(WindowHandle window, const ThreadMessage& message) noexcept;

// Hands all waiting messages of the calling thread's endpoints to their handlers, and drops its other waiting
// thread messages. False as soon as it met the quit message (which is then gone): what was posted to the endpoints
// before it is handled by then.
[[nodiscard]] bool dispatchWindowMessages();

} // namespace Platform
