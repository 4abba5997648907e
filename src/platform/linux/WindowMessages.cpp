#include "platform/WindowMessages.h"

#include "platform/linux/QueueTable.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace Platform {
namespace {

constinit QueueTable<10> windowQueues;

std::uint32_t idOf(WindowHandle window) {
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window));
}
WindowHandle handleOf(std::uint32_t id) {
    return reinterpret_cast<WindowHandle>(std::uintptr_t{id});
}

struct Endpoint {
    std::uint32_t id = windowQueues.acquire();
    std::function<void(const ThreadMessage&)> handler;
    std::function<void()> wake;

    Endpoint(std::function<void(const ThreadMessage&)> itsHandler, std::function<void()> itsWake)
        : handler(std::move(itsHandler)), wake(std::move(itsWake)) {
        if (id == 0) {
            throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
        }
        windowQueues.queue(id).open(id, wake ? &wake : nullptr);
    }
    // Takes away what posters see; a handler that is running keeps the rest until it returns.
    void close() {
        if (id != 0) {
            windowQueues.release(std::exchange(id, 0U));
        }
    }
    ~Endpoint() { close(); }
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;
};

using Endpoints = std::vector<std::shared_ptr<Endpoint>>;

Endpoints& ownEndpoints() {
    thread_local Endpoints endpoints;
    return endpoints;
}

// Handles what waits at one endpoint; true when there was anything. A handler may destroy any endpoint.
bool dispatch(const std::shared_ptr<Endpoint>& endpoint) {
    bool anything = false;
    ThreadMessage message;
    while (endpoint->id != 0 && windowQueues.queue(endpoint->id).peek(message, true)) {
        anything = true;
        endpoint->handler(message);
    }
    return anything;
}

} // namespace

WindowHandle createWindowEndpoint(std::function<void(const ThreadMessage&)> handler, std::function<void()> wake) {
    ownEndpoints().push_back(std::make_shared<Endpoint>(std::move(handler), std::move(wake)));
    return handleOf(ownEndpoints().back()->id);
}

void destroyWindowEndpoint(WindowHandle window) {
    Endpoints& endpoints = ownEndpoints();
    const auto place = std::find_if(endpoints.begin(), endpoints.end(),
                                    [window](const auto& endpoint) { return handleOf(endpoint->id) == window; });
    if (place != endpoints.end()) {
        (*place)->close();
        endpoints.erase(place);
    }
}

bool postWindowMessage(WindowHandle window, const ThreadMessage& message) noexcept {
    const std::uint32_t id = idOf(window);
    return handleOf(id) == window && id != 0 && isWindowMessage(message.id) &&
           windowQueues.queue(id).postAndWake(id, message);
}

bool dispatchWindowMessages() {
    for (bool anything = true; anything;) {
        anything = false;
        // A copy: handlers create and destroy endpoints.
        for (const Endpoints endpoints = ownEndpoints(); const auto& endpoint : endpoints) {
            anything = dispatch(endpoint) || anything;
        }
    }
    ThreadMessage message;
    while (peekThreadMessage(message, true)) {
        if (message.id == quitMessage) {
            return false;
        }
    }
    return true;
}

} // namespace Platform
