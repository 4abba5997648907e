// The one lock type of the system.
#pragma once

#include "platform/RecursiveLock.h"

namespace Backend {

// Recursive. Also a BasicLockable, for std::lock_guard.
class CriticalSection final {
public:
    CriticalSection() = default;
    // Leaves the section once before it goes. Deliberate: an owner may shut down while it is still inside, and the
    // others must get through. A thread that does not hold the section leaves nothing.
    ~CriticalSection();
    CriticalSection(const CriticalSection&) = delete;
    // Whoever holds a section can be assigned as a whole: each side keeps the lock it has, in the state it is in.
    CriticalSection& operator=(const CriticalSection&) noexcept { return *this; }

    void enter() noexcept { lock_.enter(); } // [any]
    void leave() noexcept { lock_.leave(); } // [any]
    void lock() noexcept { enter(); }        // [any]
    void unlock() noexcept { leave(); }      // [any]

    // Enters while going on to dispatch the calling thread's window messages: for threads that own windows. False, and
    // the section not entered, as soon as it met the quit message (which is then gone). [gui]
    [[nodiscard]] bool waitWithMessageLoop();

private:
    Platform::RecursiveLock lock_;
};

} // namespace Backend
