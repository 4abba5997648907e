// The proxy of one subsystem on a message thread: turns calls into messages and messages back into calls.
#pragma once

#include "platform/ThreadMessages.h"

#include <cstdint>

namespace Backend {

class MessageManagerMaster;

// A subclass claims a contiguous range of message ids. Its postX return at once; its sendX come back when handleX has
// run on the master's thread. It is registered with its master, which does not own it.
class MessageManager {
public:
    // Only remembers the master, which outlives the manager; MessageManagerMaster::addMessageManager registers it.
    explicit MessageManager(MessageManagerMaster& master) : master_(master) {}
    virtual ~MessageManager() = default;
    MessageManager(const MessageManager&) = delete;
    MessageManager& operator=(const MessageManager&) = delete;

    // True for the ids of this manager. Called often: a plain range test.
    [[nodiscard]] virtual bool wantMessage(std::uint32_t id) const = 0;
    // Runs a message that wantMessage wants. [the master's thread]
    virtual void handleMessage(const Platform::ThreadMessage& message) = 0;

    [[nodiscard]] bool currentThreadIsManagerThread() const; // [any]

protected:
    [[nodiscard]] MessageManagerMaster& getMaster() const { return master_; }

    // Posts with the rules of MessageManagerMaster::postMessage. [any]
    bool post(std::uint32_t id, std::uintptr_t wParam = 0, std::intptr_t lParam = 0);
    // What a send does after its post was accepted: waits, without time-out, until the handler calls endSend or the
    // thread ends. One thread sends to a master at a time, and never the master's own, which would wait for itself.
    void awaitSend();
    // Lets the sender go on; what the handler wrote before is visible to it. [the master's thread]
    void endSend();

private:
    MessageManagerMaster& master_;
};

} // namespace Backend
