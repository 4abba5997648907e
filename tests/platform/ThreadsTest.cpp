#include "platform/Threads.h"

#include "platform/Clocks.h"

#include <atomic>
#include <gtest/gtest.h>
#include <set>
#include <vector>

using namespace Platform;

TEST(Threads, KnowTheirIdBeforeTheyRun) {
    std::atomic<ThreadId> seen{0};
    Thread thread([&seen] { seen = currentThreadId(); });
    const ThreadId id = thread.id();
    EXPECT_NE(id, 0U);
    EXPECT_NE(id, currentThreadId());
    EXPECT_EQ(seen, 0U);
    thread.resume();
    thread.join();
    thread.join();
    EXPECT_EQ(seen, id);
    EXPECT_EQ(currentThreadId(), currentThreadId());
}

TEST(Threads, ThatNeverRanAreDiscardedWithoutRunning) {
    std::atomic<bool> ran{false};
    const auto held = std::make_shared<int>(1);
    {
        const Thread thread([&ran, held] { ran = true; });
    }
    EXPECT_FALSE(ran);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Threads, OfTheSameTimeHaveDifferentIdsAndEndWithTheirBodies) {
    std::vector<std::unique_ptr<Thread>> threads;
    std::set<ThreadId> ids{currentThreadId()};
    std::atomic<int> runs{0};
    for (int i = 0; i < 50; ++i) {
        threads.push_back(std::make_unique<Thread>([&runs] { ++runs; }));
        EXPECT_TRUE(ids.insert(threads.back()->id()).second);
    }
    for (const auto& thread : threads) {
        thread->resume();
    }
    threads.clear(); // joins
    EXPECT_EQ(runs, 50);
}

TEST(Threads, GoOnWhateverBecomesOfTheirPriority) {
    bool backToNormal = false;
    Thread thread([&backToNormal] {
        setCurrentThreadName("a name that is longer than fifteen bytes");
        requestPreciseTimers();
        const bool message = setCurrentThreadPriority(Priority::message);
        const bool clock = setCurrentThreadPriority(Priority::clock);
        EXPECT_EQ(message, clock);
        backToNormal = setCurrentThreadPriority(Priority::normal);
    });
    thread.resume();
    thread.join();
    EXPECT_TRUE(backToNormal);
}

TEST(Clocks, RunForwardTogether) {
    const auto start = monotonicTime();
    const std::uint32_t startMilliseconds = millisecondTime();
    for (const unsigned sleep : {0U, 1U, 20U}) {
        const auto before = monotonicTime();
        sleepMilliseconds(sleep);
        EXPECT_GE(monotonicTime() - before, std::chrono::milliseconds(sleep));
    }
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(monotonicTime() - start).count();
    EXPECT_NEAR(static_cast<double>(millisecondTime() - startMilliseconds), static_cast<double>(passed), 20.0);
}
