#include "platform/RecursiveLock.h"

#include <atomic>
#include <windows.h>

namespace Platform {

// A critical section breaks when a thread leaves it that does not hold it: who holds it is kept here.
struct RecursiveLock::State {
    CRITICAL_SECTION section;
    std::atomic<DWORD> owner{0};
    unsigned depth = 0; // the owner's

    State() { InitializeCriticalSection(&section); }
    ~State() { DeleteCriticalSection(&section); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void taken() noexcept {
        owner.store(GetCurrentThreadId(), std::memory_order_relaxed);
        ++depth;
    }
};

RecursiveLock::RecursiveLock() : state_(std::make_unique<State>()) {}
RecursiveLock::~RecursiveLock() = default;

void RecursiveLock::enter() noexcept {
    EnterCriticalSection(&state_->section);
    state_->taken();
}

bool RecursiveLock::tryEnter() noexcept {
    if (TryEnterCriticalSection(&state_->section) == 0) {
        return false;
    }
    state_->taken();
    return true;
}

void RecursiveLock::leave() noexcept {
    if (state_->owner.load(std::memory_order_relaxed) != GetCurrentThreadId()) {
        return;
    }
    if (--state_->depth == 0) {
        state_->owner.store(0, std::memory_order_relaxed);
    }
    LeaveCriticalSection(&state_->section);
}

} // namespace Platform
