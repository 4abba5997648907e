// Opening and closing clients of a JACK server that may not answer.
#pragma once

#include "platform/Result.h"

#include <chrono>
#include <functional>
#include <jack/jack.h>
#include <string>

namespace Host {

// Opens a client of the running server, and none otherwise; the library is kept from printing. A missing server is a
// fault at once; one that does not answer in time is a fault then, and the client is closed should it still come. [any]
[[nodiscard]] Platform::Result<jack_client_t*> openJackClient(const std::string& name,
                                                              std::chrono::nanoseconds patience);

// Closes a client, waiting no longer than `patience`; `afterwards` runs when it is closed, on any thread, however late.
// [any]
void closeJackClient(jack_client_t* client, std::chrono::nanoseconds patience, std::function<void()> afterwards);

} // namespace Host
