#include "core/MessageManagerMaster.h"

#include "core/MessageManager.h"
#include "platform/ThreadServices.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace Backend {

MessageManagerMaster::MessageManagerMaster(std::string threadName) : threadName_(std::move(threadName)) {}

MessageManagerMaster::~MessageManagerMaster() {
    assert(!thread_);
}

void MessageManagerMaster::addMessageManager(MessageManager& manager) {
    assert(!thread_);
    managers_.push_back(&manager);
}

void MessageManagerMaster::start() {
    assert(!thread_ && !stopped_);
    thread_ = std::make_unique<Platform::Thread>([this] { workerThread(); });
    threadId_ = thread_->id();
    thread_->resume();
}

void MessageManagerMaster::stop() {
    if (!thread_) {
        return;
    }
    assert(!currentThreadIsManagerThread());
    while (!stopped_ && !Platform::postThreadMessage(threadId_, {.id = STOP_MESSAGE})) {
        Platform::sleepMilliseconds(Platform::postRetryMilliseconds);
    }
    stopped_ = true; // what is posted from here on would be lost behind the stop
    thread_->join();
    thread_.reset();
}

bool MessageManagerMaster::postMessage(std::uint32_t id, std::uintptr_t wParam, std::intptr_t lParam) {
    while (!tryPostMessage(id, wParam, lParam)) {
        if (stopped_) {
            return false;
        }
        Platform::sleepMilliseconds(Platform::postRetryMilliseconds);
    }
    return true;
}

bool MessageManagerMaster::tryPostMessage(std::uint32_t id, std::uintptr_t wParam, std::intptr_t lParam) noexcept {
    const Platform::ThreadId thread = threadId_;
    // After the stop the id may already belong to another thread.
    return thread != 0 && !stopped_ && Platform::postThreadMessage(thread, {id, wParam, lParam});
}

bool MessageManagerMaster::currentThreadIsManagerThread() const noexcept {
    return Platform::currentThreadId() == threadId_;
}

void MessageManagerMaster::workerThread() {
    Platform::setCurrentThreadName(threadName_.c_str());
    Platform::setCurrentThreadPriority(Platform::Priority::message);
    Platform::initializeThreadServices();
    Platform::ThreadMessage message;
    bool quit = true;
    while (Platform::getThreadMessage(message)) {
        if (message.id == STOP_MESSAGE) {
            quit = false;
            break;
        }
        dispatch(message);
    }
    // Deliberately only after a quit message: what the managers made with these services outlives a stop, since their
    // owners destroy them when the thread has ended.
    if (quit) {
        Platform::uninitializeThreadServices();
    }
    stopped_ = true;
    waitEvent_.signal(); // for a sender whose message was lost behind the stop
}

void MessageManagerMaster::dispatch(const Platform::ThreadMessage& message) {
    const auto manager =
        std::ranges::find_if(managers_, [&](const MessageManager* each) { return each->wantMessage(message.id); });
    if (manager != managers_.end()) {
        (*manager)->handleMessage(message);
        if (afterMessage_) {
            afterMessage_();
        }
    }
}

} // namespace Backend
