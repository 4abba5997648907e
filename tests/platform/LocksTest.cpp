#include "platform/AutoResetEvent.h"
#include "platform/Clocks.h"
#include "platform/RecursiveLock.h"
#include "platform/Threads.h"

#include <atomic>
#include <gtest/gtest.h>
#include <vector>

using namespace Platform;
using namespace std::chrono_literals;

namespace {

std::unique_ptr<Thread> started(std::function<void()> body) {
    auto thread = std::make_unique<Thread>(std::move(body));
    thread->resume();
    return thread;
}

bool otherThreadCanEnter(RecursiveLock& lock) {
    bool entered = false;
    started([&] {
        entered = lock.tryEnter();
        lock.leave(); // harmless also when it did not enter
    })->join();
    return entered;
}

} // namespace

TEST(AutoResetEvent, SignalsDoNotCountUpAndAreUsedUpByOneWait) {
    AutoResetEvent event;
    EXPECT_FALSE(event.waitFor(0ns));
    event.signal();
    event.signal();
    EXPECT_TRUE(event.waitFor(0ns));
    EXPECT_FALSE(event.waitFor(-1ns));
    event.signal();
    EXPECT_TRUE(event.waitFor(std::chrono::nanoseconds::max()));
    event.signal();
    event.wait();
    const auto before = monotonicTime();
    EXPECT_FALSE(event.waitFor(15ms));
    EXPECT_GE(monotonicTime() - before, 15ms);
}

TEST(AutoResetEvent, HandsOverBetweenTwoThreads) {
    AutoResetEvent ping;
    AutoResetEvent pong;
    unsigned shared = 0; // only the events keep the threads apart
    constexpr unsigned rounds = 5'000;
    const auto partner = started([&] {
        for (unsigned i = 0; i < rounds; ++i) {
            ping.wait();
            ++shared;
            pong.signal();
        }
    });
    for (unsigned i = 0; i < rounds; ++i) {
        ping.signal();
        pong.wait();
        ASSERT_EQ(shared, i + 1);
    }
}

TEST(AutoResetEvent, ReleasesNoMoreWaitersThanSignalsAndLosesNoneThatIsNeeded) {
    AutoResetEvent event;
    std::atomic<unsigned> released{0};
    std::vector<std::unique_ptr<Thread>> waiters;
    constexpr unsigned count = 6;
    for (unsigned i = 0; i < count; ++i) {
        waiters.push_back(started([&, i] {
            for (int turn = 0; turn < 200; ++turn) {
                if (i % 2 == 0) {
                    event.wait();
                } else {
                    while (!event.waitFor(50us)) {
                    }
                }
                ++released;
            }
        }));
    }
    for (unsigned signals = 1; released < count * 200; ++signals) {
        event.signal();
        ASSERT_LE(released, signals);
        sleepMilliseconds(0);
    }
}

TEST(AutoResetEvent, MayBeDestroyedByTheWaiterAtOnce) {
    for (int i = 0; i < 1'000; ++i) {
        auto event = std::make_unique<AutoResetEvent>();
        const auto signaller = started([raw = event.get()] { raw->signal(); });
        event->wait();
        event.reset();
    }
}

TEST(RecursiveLock, IsHeldUntilLeftAsOftenAsEntered) {
    RecursiveLock lock;
    lock.enter();
    EXPECT_TRUE(lock.tryEnter());
    lock.enter();
    for (int left = 0; left < 3; ++left) {
        EXPECT_FALSE(otherThreadCanEnter(lock)) << left;
        lock.leave();
    }
    EXPECT_TRUE(otherThreadCanEnter(lock));
    EXPECT_TRUE(otherThreadCanEnter(lock)) << "the other thread's leave worked";
}

TEST(RecursiveLock, LeavingWithoutHoldingChangesNothing) {
    RecursiveLock lock;
    lock.leave();
    lock.leave();
    EXPECT_TRUE(lock.tryEnter());
    started([&] { lock.leave(); })->join();
    EXPECT_FALSE(otherThreadCanEnter(lock));
    lock.leave();
    lock.leave();
    EXPECT_TRUE(otherThreadCanEnter(lock));
}

TEST(RecursiveLock, KeepsThreadsApart) {
    RecursiveLock lock;
    unsigned counter = 0;
    constexpr unsigned each = 20'000;
    {
        std::vector<std::unique_ptr<Thread>> threads;
        for (int i = 0; i < 4; ++i) {
            threads.push_back(started([&, i] {
                for (unsigned n = 0; n < each; ++n) {
                    if (i % 2 == 0) {
                        lock.enter();
                    } else {
                        while (!lock.tryEnter()) {
                            sleepMilliseconds(0);
                        }
                    }
                    lock.enter();
                    ++counter;
                    lock.leave();
                    lock.leave();
                    lock.leave(); // once too often
                }
            }));
        }
    }
    EXPECT_EQ(counter, 4 * each);
}
