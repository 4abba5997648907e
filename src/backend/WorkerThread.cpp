#include "backend/WorkerThread.h"

#include <utility>

namespace Backend {

namespace {
constexpr unsigned retryMilliseconds = 10;
} // namespace

WorkerThread::WorkerThread(std::string name, std::function<void()> begin,
                           std::function<void(const Platform::ThreadMessage&)> handle)
    : name_(std::move(name)), begin_(std::move(begin)), handle_(std::move(handle)),
      thread_(std::make_unique<Platform::Thread>([this] { run(); })) {
    thread_->resume();
}

WorkerThread::~WorkerThread() {
    stop();
}

void WorkerThread::run() {
    Platform::setCurrentThreadName(name_.c_str());
    begin_();
    for (Platform::ThreadMessage message; Platform::getThreadMessage(message) && message.id != STOP_MESSAGE;) {
        handle_(message);
    }
}

bool WorkerThread::post(const Platform::ThreadMessage& message) noexcept {
    return Platform::postThreadMessage(thread_->id(), message);
}

void WorkerThread::stop() {
    if (!thread_) {
        return;
    }
    while (!Platform::postThreadMessage(thread_->id(), {STOP_MESSAGE, 0, 0})) {
        Platform::sleepMilliseconds(retryMilliseconds);
    }
    thread_->join();
    thread_.reset();
}

} // namespace Backend
