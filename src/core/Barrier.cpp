#include "core/Barrier.h"

#include <utility>

namespace Backend {

Barrier::Barrier(std::function<void()> onOpen) : onOpen_(std::move(onOpen)) {}

// open() may still hold the lock when a waiter has seen the gate open.
Barrier::~Barrier() {
    const std::lock_guard lock(mutex_);
}

void Barrier::open() {
    const std::lock_guard lock(mutex_);
    if (open_.exchange(true, std::memory_order_acq_rel)) {
        return;
    }
    opened_.notify_all();
    if (onOpen_) {
        onOpen_();
    }
}

void Barrier::wait() {
    std::unique_lock lock(mutex_);
    opened_.wait(lock, [this] { return isOpen(); });
}

bool Barrier::waitFor(std::chrono::nanoseconds time) {
    std::unique_lock lock(mutex_);
    return opened_.wait_for(lock, time, [this] { return isOpen(); });
}

} // namespace Backend
