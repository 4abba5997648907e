// Window messages: anything that shows something is an endpoint to which any thread may post.
#pragma once

#include "platform/ThreadMessages.h"

#include <functional>

namespace Platform {

struct WindowTag;
// Names an endpoint; null names none.
using WindowHandle = WindowTag*;

// Creates an endpoint that belongs to the calling thread. What is posted to it is given to `handler` on that
// thread, in the order of posting, whenever the thread dispatches. `wake`, when given, is called by each poster
// after its post and must not block: a toolkit's loop uses it to have dispatchWindowMessages called.
[[nodiscard]] WindowHandle createWindowEndpoint(std::function<void(const ThreadMessage&)> handler,
                                                std::function<void()> wake = {});

// Removes an endpoint of the calling thread; messages that were not yet dispatched are lost.
void destroyWindowEndpoint(WindowHandle window);

// Posts a message; false, and nothing else, when the endpoint does not exist or holds messageQueueCapacity
// messages. [any]
bool postWindowMessage(WindowHandle window, const ThreadMessage& message) noexcept;

// Hands all waiting messages of the calling thread's endpoints to their handlers, and drops its other waiting
// thread messages. False as soon as it met the quit message (which is then gone).
[[nodiscard]] bool dispatchWindowMessages();

} // namespace Platform
