#include "platform/WindowMessages.h"

#include "platform/win32/OwnQueue.h"
#include "platform/win32/PerThread.h"
#include "platform/win32/SharedGuard.h"

#include <atomic>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Platform {
namespace {

struct Endpoint {
    DWORD owner = GetCurrentThreadId();
    std::function<void(const ThreadMessage&)> handler;
    std::function<void()> wake;
    std::atomic<std::size_t> waiting{0};
};

constexpr UINT lastMessage = 0xFFFF;

using Endpoints = std::unordered_map<HWND, std::shared_ptr<Endpoint>>;

SRWLOCK endpointsLock = SRWLOCK_INIT;
Endpoints& endpoints() {
    static auto& map = *new Endpoints; // outlives every thread
    return map;
}

HWND windowOf(WindowHandle handle) {
    return reinterpret_cast<HWND>(handle);
}

// Takes an endpoint away from posters.
std::shared_ptr<Endpoint> unlist(HWND window) {
    const ExclusiveGuard guard(endpointsLock);
    const auto found = endpoints().find(window);
    if (found == endpoints().end() || found->second->owner != GetCurrentThreadId()) {
        return nullptr;
    }
    auto endpoint = std::move(found->second);
    endpoints().erase(found);
    return endpoint;
}

std::shared_ptr<Endpoint> endpointOf(HWND window) {
    const SharedGuard guard(endpointsLock);
    const auto found = endpoints().find(window);
    return found == endpoints().end() ? nullptr : found->second;
}

// Any message loop of the thread leads here, also one of a toolkit.
LRESULT CALLBACK handle(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    const auto endpoint = isWindowMessage(id) ? endpointOf(window) : nullptr;
    if (endpoint == nullptr) {
        return DefWindowProcA(window, id, wParam, lParam);
    }
    endpoint->waiting.fetch_sub(1);
    endpoint->handler({id, wParam, lParam});
    return 0;
}

const char* windowClass() {
    static const char* const name = [] {
        WNDCLASSA description{};
        description.lpfnWndProc = &handle;
        description.hInstance = GetModuleHandleA(nullptr);
        description.lpszClassName = "TembrelEndpoint";
        RegisterClassA(&description);
        return description.lpszClassName;
    }();
    return name;
}

// The system removes a thread's windows with the thread: so go their endpoints.
struct OwnWindows {
    std::vector<HWND> windows;

    OwnWindows() = default;
    ~OwnWindows() {
        for (const HWND window : windows) {
            static_cast<void>(unlist(window));
        }
    }
    OwnWindows(const OwnWindows&) = delete;
    OwnWindows& operator=(const OwnWindows&) = delete;
};

std::vector<HWND>& ownWindows() {
    static auto& all = *new PerThread<OwnWindows>; // outlives every thread
    return all.own().windows;
}

} // namespace

WindowHandle createWindowEndpoint(std::function<void(const ThreadMessage&)> handler, std::function<void()> wake) {
    auto endpoint = std::make_shared<Endpoint>();
    endpoint->handler = std::move(handler);
    endpoint->wake = std::move(wake);
    std::vector<HWND>& own = ownWindows();
    own.reserve(own.size() + 1);
    const HWND window =
        CreateWindowExA(0, windowClass(), "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, GetModuleHandleA(nullptr), nullptr);
    if (window == nullptr) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    }
    own.push_back(window);
    const ExclusiveGuard guard(endpointsLock);
    endpoints().insert_or_assign(window, std::move(endpoint));
    return reinterpret_cast<WindowHandle>(window);
}

void destroyWindowEndpoint(WindowHandle handle) {
    const HWND window = windowOf(handle);
    if (unlist(window) != nullptr) {
        DestroyWindow(window);
        std::erase(ownWindows(), window);
    }
}

bool postWindowMessage(WindowHandle handle, const ThreadMessage& message) noexcept {
    const HWND window = windowOf(handle);
    const auto endpoint = isWindowMessage(message.id) ? endpointOf(window) : nullptr;
    if (endpoint == nullptr) {
        return false;
    }
    if (endpoint->waiting.fetch_add(1) >= messageQueueCapacity ||
        PostMessageA(window, message.id, message.wParam, message.lParam) == 0) {
        endpoint->waiting.fetch_sub(1);
        return false;
    }
    if (endpoint->wake) {
        // Under the lock the endpoint stays, and with it what `wake` speaks to.
        const SharedGuard guard(endpointsLock);
        if (const auto found = endpoints().find(window); found != endpoints().end() && found->second == endpoint) {
            endpoint->wake();
        }
    }
    return true;
}

// Only what is the endpoints': what waits for windows of a toolkit has to go through the toolkit's own loop.
bool dispatchWindowMessages() {
    createMessageQueue();
    MSG message;
    for (bool anything = true; anything;) {
        anything = false;
        // A copy: handlers create and destroy endpoints.
        for (const std::vector<HWND> windows = ownWindows(); const HWND window : windows) {
            while (PeekMessageA(&message, window, applicationMessage, lastMessage, PM_REMOVE) != 0) {
                anything = true;
                DispatchMessageA(&message);
            }
        }
    }
    const auto ofThread = reinterpret_cast<HWND>(std::intptr_t{-1});
    while (PeekMessageA(&message, ofThread, 0, 0, PM_REMOVE) != 0) {
        noteThreadMessageTaken();
        if (message.message == WM_QUIT) {
            return false;
        }
    }
    return true;
}

} // namespace Platform
