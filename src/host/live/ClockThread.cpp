#include "host/live/ClockThread.h"

#include "platform/Clocks.h"

#include <utility>

namespace Host {

ClockThread::ClockThread(std::function<void()> round, ClockWaker& waker) : round_(std::move(round)), waker_(waker) {}

ClockThread::~ClockThread() {
    stop();
}

void ClockThread::start() {
    thread_ = std::make_unique<Platform::Thread>([this] {
        Platform::setCurrentThreadName("clock");
        Platform::requestPreciseTimers();
        static_cast<void>(Platform::setCurrentThreadPriority(Platform::Priority::clock));
        while (!stopping_.load(std::memory_order_relaxed)) {
            round_();
        }
    });
    thread_->resume();
}

void ClockThread::stop() {
    stopping_.store(true, std::memory_order_relaxed);
    waker_.tell();
    thread_.reset();
}

} // namespace Host
