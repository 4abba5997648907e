#include "platform/ThreadMessages.h"

#include "platform/win32/OwnQueue.h"
#include "platform/win32/PerThread.h"
#include "platform/win32/SharedGuard.h"

#include <atomic>
#include <memory>
#include <unordered_map>

namespace Platform {
namespace {

using Count = std::atomic<std::size_t>;

// How many messages wait in each thread's queue. The system has a limit of its own, which users may change and which
// not every system keeps; and it makes queues for threads that never asked. Entries live as long as their threads.
// Posters share a count with its thread, so that the lock is never held during a call of the system.
SRWLOCK countsLock = SRWLOCK_INIT;
using Counts = std::unordered_map<DWORD, std::shared_ptr<Count>>;
Counts& counts() {
    static auto& map = *new Counts; // outlives every thread
    return map;
}
// Never below 0: other code may post to a thread past us, and the thread's own quit message was not counted either.
void countDown(Count& count) noexcept {
    for (std::size_t seen = count; seen > 0 && !count.compare_exchange_weak(seen, seen - 1);) {
    }
}
std::shared_ptr<Count> countOf(DWORD thread) noexcept {
    const SharedGuard guard(countsLock);
    const auto found = counts().find(thread);
    return found == counts().end() ? nullptr : found->second;
}

// The calling thread's own count, listed while the thread lives and has asked for a queue.
class OwnCount final {
public:
    OwnCount() = default;
    ~OwnCount() {
        if (isListed_) {
            const ExclusiveGuard guard(countsLock);
            counts().erase(GetCurrentThreadId());
        }
    }
    OwnCount(const OwnCount&) = delete;
    OwnCount& operator=(const OwnCount&) = delete;

    void list() {
        if (!isListed_) {
            const ExclusiveGuard guard(countsLock);
            counts().insert_or_assign(GetCurrentThreadId(), count_);
            isListed_ = true;
        }
    }
    void taken() noexcept { countDown(*count_); }

private:
    std::shared_ptr<Count> count_ = std::make_shared<Count>(0);
    bool isListed_ = false;
};

OwnCount& ownCount() {
    static auto& counts = *new PerThread<OwnCount>; // outlives every thread
    return counts.own();
}

// Names all messages of the thread that belong to no window. Messages to windows wait for dispatchWindowMessages.
const HWND noWindow = reinterpret_cast<HWND>(std::intptr_t{-1});

ThreadMessage ours(const MSG& message) {
    return {message.message, message.wParam, static_cast<std::intptr_t>(message.lParam)};
}

} // namespace

void noteThreadMessageTaken() noexcept {
    ownCount().taken();
}

bool postThreadMessage(ThreadId thread, const ThreadMessage& message) noexcept {
    const std::shared_ptr<Count> count = countOf(thread);
    if (count == nullptr) {
        return false;
    }
    if (count->fetch_add(1) >= messageQueueCapacity ||
        PostThreadMessageA(thread, message.id, message.wParam, message.lParam) == 0) {
        countDown(*count);
        return false;
    }
    return true;
}

void createMessageQueue() {
    // Asking for a message makes the system give the thread a queue.
    MSG message;
    PeekMessageA(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
    ownCount().list();
}

bool getThreadMessage(ThreadMessage& message) {
    ownCount().list();
    MSG taken{};
    const bool goesOn = GetMessageA(&taken, noWindow, 0, 0) != 0;
    ownCount().taken();
    message = ours(taken);
    return goesOn;
}

bool peekThreadMessage(ThreadMessage& message, bool remove) {
    ownCount().list();
    MSG seen{};
    if (PeekMessageA(&seen, noWindow, 0, 0, remove ? PM_REMOVE : PM_NOREMOVE) == 0) {
        return false;
    }
    if (remove) {
        ownCount().taken();
    }
    message = ours(seen);
    return true;
}

void postQuitMessage() {
    PostQuitMessage(0);
}

} // namespace Platform
