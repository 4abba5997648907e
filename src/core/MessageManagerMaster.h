// One message-queue thread and the managers that are served on it.
#pragma once

#include "platform/AutoResetEvent.h"
#include "platform/ThreadMessages.h"
#include "platform/Threads.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Backend {

class MessageManager;

// Its life: managers are added, start(), stop(), each once. The destructor does not stop the thread: the owner does.
class MessageManagerMaster final {
public:
    // Ends the thread as soon as it is taken from the queue.
    static constexpr std::uint32_t STOP_MESSAGE = Platform::applicationMessage + 201;

    // `threadName` is what debuggers show.
    explicit MessageManagerMaster(std::string threadName);
    // Only before start() or after stop().
    ~MessageManagerMaster();
    MessageManagerMaster(const MessageManagerMaster&) = delete;
    MessageManagerMaster& operator=(const MessageManagerMaster&) = delete;

    // Appends to the list that the thread asks in this order; the first manager that wants a message is the only one
    // that sees it. Only before start(). The manager stays the caller's and lives until stop() has returned.
    void addMessageManager(MessageManager& manager);

    // Called on the thread after each message that was handled. Only before start().
    void setAfterMessage(std::function<void()> work) { afterMessage_ = std::move(work); }

    // Creates and runs the thread; its id is valid before its first instruction. [owner]
    void start();
    // Handles what is in the queue, ends the thread and waits for its end. Messages that arrive behind the stop are
    // lost, with the heap copies they carry: posters fall silent first. [owner, not the thread itself]
    void stop();

    // Appends a message to the thread's queue. While there is no queue yet (before start) or the queue is full, tries
    // again every 10 ms without limit; so the master's own thread must not post where its queue may be full: nobody
    // would empty it. Handlers that post to their own master call tryPostMessage, or post a bounded number of
    // messages for each one handled. False once the master has been stopped: the message is dropped. [any]
    bool postMessage(std::uint32_t id, std::uintptr_t wParam = 0, std::intptr_t lParam = 0);
    // One try: false when the message was not accepted. [any]
    [[nodiscard]] bool tryPostMessage(std::uint32_t id, std::uintptr_t wParam = 0, std::intptr_t lParam = 0) noexcept;

    [[nodiscard]] bool currentThreadIsManagerThread() const noexcept; // [any]
    // Serves every blocking send of every manager of this master. [any]
    [[nodiscard]] Platform::AutoResetEvent& getWaitEvent() noexcept { return waitEvent_; }

private:
    void workerThread();
    void dispatch(const Platform::ThreadMessage& message);

    std::string threadName_;
    std::atomic<Platform::ThreadId> threadId_{0};
    std::atomic<bool> stopped_{false};
    std::unique_ptr<Platform::Thread> thread_;
    std::vector<MessageManager*> managers_;
    std::function<void()> afterMessage_;
    Platform::AutoResetEvent waitEvent_;
};

} // namespace Backend
