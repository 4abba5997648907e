#include "core/Barrier.h"
#include "core/CriticalSection.h"
#include "platform/WindowMessages.h"

#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace Backend {
namespace {

// Asked on a thread of its own, which has nothing to dispatch but a quit message.
[[nodiscard]] bool isFree(CriticalSection& section) {
    bool entered = false;
    std::thread([&] {
        Platform::createMessageQueue();
        Platform::postQuitMessage();
        entered = section.waitWithMessageLoop();
        if (entered) {
            section.leave();
        }
    }).join();
    return entered;
}

TEST(CriticalSection, LetsOneThreadInAtATime) {
    CriticalSection section;
    int count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int j = 0; j < 5000; ++j) {
                const std::lock_guard outer(section);
                const std::lock_guard inner(section);
                ++count;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(count, 20'000);
}

TEST(CriticalSection, IsFreeAfterAsManyLeavesAsEnters) {
    CriticalSection section;
    section.enter();
    section.enter();
    section.leave();
    EXPECT_FALSE(isFree(section));
    section.leave();
    EXPECT_TRUE(isFree(section));
}

TEST(CriticalSection, AssigningLeavesBothLocksAsTheyAre) {
    CriticalSection held;
    CriticalSection open;
    held.enter();
    held = open;
    EXPECT_FALSE(isFree(held));
    open = held;
    EXPECT_TRUE(isFree(open));
    held.leave();
    EXPECT_TRUE(isFree(held));
}

TEST(CriticalSection, CanGoWhileItIsHeldOrNot) {
    auto section = std::make_unique<CriticalSection>();
    section->enter();
    section.reset();
    section = std::make_unique<CriticalSection>();
    section.reset();
}

TEST(CriticalSection, WaitingGoesOnDispatchingUntilTheLockIsFree) {
    CriticalSection section;
    Barrier held;
    Barrier dispatched;
    std::thread holder([&] {
        section.enter();
        held.open();
        dispatched.wait();
        section.leave();
    });
    held.wait();
    const Platform::WindowHandle window =
        Platform::createWindowEndpoint([&](const Platform::ThreadMessage&) { dispatched.open(); });
    ASSERT_TRUE(Platform::postWindowMessage(window, {Platform::applicationMessage, 0, 0}));
    EXPECT_TRUE(section.waitWithMessageLoop()); // only the dispatched message lets the holder leave
    section.leave();
    holder.join();
    Platform::destroyWindowEndpoint(window);
}

} // namespace
} // namespace Backend
