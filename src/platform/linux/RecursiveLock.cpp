#include "platform/RecursiveLock.h"

#include <atomic>
#include <cstdint>
#include <pthread.h>

namespace Platform {
namespace {

// The calling thread's own address: unlike a thread id it is there without asking for it.
std::uintptr_t self() noexcept {
    thread_local constinit char mark = 0;
    return reinterpret_cast<std::uintptr_t>(&mark);
}

} // namespace

// The mutex underneath is plain; who holds it and how often is kept here, so that a leave by another thread is
// seen before it reaches the mutex.
struct RecursiveLock::State {
    pthread_mutex_t mutex{};
    std::atomic<std::uintptr_t> owner{0};
    unsigned depth = 0; // the owner's

    State() {
        pthread_mutexattr_t attributes;
        pthread_mutexattr_init(&attributes);
        // A thread of low urgency that holds the lock runs with the urgency of the most urgent one that waits.
        static_cast<void>(pthread_mutexattr_setprotocol(&attributes, PTHREAD_PRIO_INHERIT));
        if (pthread_mutex_init(&mutex, &attributes) != 0) {
            pthread_mutex_init(&mutex, nullptr);
        }
        pthread_mutexattr_destroy(&attributes);
    }
    ~State() { pthread_mutex_destroy(&mutex); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    bool isHeldByCaller() const noexcept { return owner.load(std::memory_order_relaxed) == self(); }
    void taken() noexcept {
        owner.store(self(), std::memory_order_relaxed);
        depth = 1;
    }
};

RecursiveLock::RecursiveLock() : state_(std::make_unique<State>()) {}
RecursiveLock::~RecursiveLock() = default;

void RecursiveLock::enter() noexcept {
    if (state_->isHeldByCaller()) {
        ++state_->depth;
        return;
    }
    pthread_mutex_lock(&state_->mutex);
    state_->taken();
}

bool RecursiveLock::tryEnter() noexcept {
    if (state_->isHeldByCaller()) {
        ++state_->depth;
        return true;
    }
    if (pthread_mutex_trylock(&state_->mutex) != 0) {
        return false;
    }
    state_->taken();
    return true;
}

void RecursiveLock::leave() noexcept {
    if (!state_->isHeldByCaller() || --state_->depth > 0) {
        return;
    }
    state_->owner.store(0, std::memory_order_relaxed);
    pthread_mutex_unlock(&state_->mutex);
}

} // namespace Platform
