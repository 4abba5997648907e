#include "core/WorkerThread.h"

#include <utility>

namespace Backend {

WorkerThread::WorkerThread(std::string name, std::function<void()> begin,
                           std::function<void(const Platform::ThreadMessage&)> handle)
    : name_(std::move(name)), begin_(std::move(begin)), handle_(std::move(handle)) {}

WorkerThread::~WorkerThread() {
    stop();
}

void WorkerThread::start() {
    Platform::AutoResetEvent ready;
    thread_ = std::make_unique<Platform::Thread>([this, &ready] { run(ready); });
    thread_->resume();
    ready.wait();
    threadId_ = thread_->id();
}

void WorkerThread::run(Platform::AutoResetEvent& ready) {
    Platform::setCurrentThreadName(name_.c_str());
    Platform::createMessageQueue();
    ready.signal(); // it may be gone from here on
    begin_();
    for (Platform::ThreadMessage message; Platform::getThreadMessage(message) && message.id != STOP_MESSAGE;) {
        handle_(message);
    }
}

void WorkerThread::stop() {
    if (!thread_) {
        return;
    }
    post({STOP_MESSAGE, 0, 0});
    thread_->join();
    threadId_ = 0;
    thread_.reset();
}

bool WorkerThread::isCurrentThread() const noexcept {
    return threadId_ == Platform::currentThreadId();
}

bool WorkerThread::tryPost(const Platform::ThreadMessage& message) noexcept {
    const Platform::ThreadId thread = threadId_;
    return thread != 0 && Platform::postThreadMessage(thread, message);
}

bool WorkerThread::post(const Platform::ThreadMessage& message) {
    while (!tryPost(message)) {
        if (!isRunning()) {
            return false;
        }
        Platform::sleepMilliseconds(Platform::postRetryMilliseconds);
    }
    return true;
}

} // namespace Backend
