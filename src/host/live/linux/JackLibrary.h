// Opening and closing clients of a JACK server that may not answer.
#pragma once

#include <chrono>
#include <functional>
#include <jack/jack.h>
#include <string>

namespace Host {

// Opens a client of the running server, and starts none; the library is kept from printing. Null at once without a
// server, and after `patience` when it does not answer; the client is closed should it still come. [any]
[[nodiscard]] jack_client_t* openJackClient(const std::string& name, std::chrono::nanoseconds patience);

// Closes a client, waiting no longer than `patience`; `afterwards` runs when it is closed, on any thread, however late.
// [any]
void closeJackClient(jack_client_t* client, std::chrono::nanoseconds patience, std::function<void()> afterwards);

} // namespace Host
