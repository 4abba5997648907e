#include "host/live/linux/AbandonableThread.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace Host {

struct AbandonableThread::State {
    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
};

AbandonableThread::AbandonableThread(std::function<void()> work) : state_(std::make_shared<State>()) {
    std::thread([state = state_, work = std::move(work)]() mutable {
        work();
        work = nullptr; // what it holds goes before it counts as done
        const std::lock_guard lock(state->mutex);
        state->isDone = true;
        state->done.notify_all();
    }).detach();
}

AbandonableThread::~AbandonableThread() = default;

bool AbandonableThread::isDoneWithin(std::chrono::nanoseconds patience) {
    std::unique_lock lock(state_->mutex);
    return state_->done.wait_for(lock, patience, [this] { return state_->isDone; });
}

} // namespace Host
