#include "platform/ThreadMessages.h"

#include "platform/AutoResetEvent.h"
#include "support/RandomCases.h"

#include <array>
#include <atomic>
#include <deque>
#include <gtest/gtest.h>
#include <vector>

using namespace Platform;

namespace {

constexpr std::uint32_t number = applicationMessage + 7;

ThreadMessage numbered(std::size_t value) {
    return {number, value, -static_cast<std::intptr_t>(value)};
}

// Runs a body on a thread of its own, so that each case has a fresh queue, and waits for its end.
void onThread(const std::function<void()>& body) {
    Thread thread(body);
    thread.resume();
    thread.join();
}

void postUntilAccepted(ThreadId thread, const ThreadMessage& message) {
    while (!postThreadMessage(thread, message)) {
        sleepMilliseconds(0);
    }
}

} // namespace

TEST(ThreadMessages, AreRefusedWhileThereIsNoQueue) {
    EXPECT_FALSE(postThreadMessage(0, numbered(1)));
    EXPECT_FALSE(postThreadMessage(0xFFFF'FFF0, numbered(1)));
    AutoResetEvent hasQueue;
    AutoResetEvent mayAsk;
    Thread thread([&] {
        mayAsk.wait();
        createMessageQueue();
        createMessageQueue();
        hasQueue.signal();
        ThreadMessage message;
        EXPECT_TRUE(getThreadMessage(message));
        EXPECT_EQ(message.wParam, 2U);
    });
    EXPECT_FALSE(postThreadMessage(thread.id(), numbered(1))) << "suspended";
    thread.resume();
    EXPECT_FALSE(postThreadMessage(thread.id(), numbered(1))) << "has not asked for a queue";
    mayAsk.signal();
    hasQueue.wait();
    EXPECT_TRUE(postThreadMessage(thread.id(), numbered(2)));
    thread.join();
    EXPECT_FALSE(postThreadMessage(thread.id(), numbered(3))) << "ended";
}

TEST(ThreadMessages, FillTheQueueToItsCapacityAndStayInOrder) {
    onThread([] {
        createMessageQueue();
        const ThreadId self = currentThreadId();
        std::size_t posted = 0;
        std::size_t taken = 0;
        // Three laps, so that the end of any ring is passed.
        for (int lap = 0; lap < 3; ++lap) {
            while (posted - taken < messageQueueCapacity) {
                ASSERT_TRUE(postThreadMessage(self, numbered(posted++)));
            }
            ASSERT_FALSE(postThreadMessage(self, numbered(posted)));
            for (std::size_t count = lap == 2 ? messageQueueCapacity : 7'001; count > 0; --count) {
                ThreadMessage message;
                ASSERT_TRUE(getThreadMessage(message));
                ASSERT_EQ(message.id, number);
                ASSERT_EQ(message.wParam, taken);
                ASSERT_EQ(message.lParam, -static_cast<std::intptr_t>(taken));
                ++taken;
            }
        }
        ThreadMessage message;
        EXPECT_FALSE(peekThreadMessage(message, true));
    });
}

TEST(ThreadMessages, QuitComesInItsPlaceWhenPostedByIdAndLastWhenPostedByTheThread) {
    onThread([] {
        createMessageQueue();
        const ThreadId self = currentThreadId();
        for (std::size_t i = 0; i + 1 < messageQueueCapacity; ++i) {
            ASSERT_TRUE(postThreadMessage(self, numbered(i)));
        }
        ASSERT_TRUE(postThreadMessage(self, {quitMessage, 0, 0}));
        postQuitMessage(); // finds room in the full queue
        ThreadMessage message;
        ASSERT_TRUE(getThreadMessage(message));
        ASSERT_TRUE(postThreadMessage(self, numbered(77)));
        for (std::size_t i = 1; i + 1 < messageQueueCapacity; ++i) {
            ASSERT_TRUE(getThreadMessage(message));
        }
        EXPECT_FALSE(getThreadMessage(message)) << "the quit message posted by id";
        EXPECT_TRUE(getThreadMessage(message)) << "posted after it";
        EXPECT_EQ(message.wParam, 77U);
        ASSERT_TRUE(peekThreadMessage(message, false)) << "the thread's own quit message";
        EXPECT_EQ(message.id, quitMessage);
        EXPECT_FALSE(getThreadMessage(message));
        EXPECT_FALSE(peekThreadMessage(message, true)) << "it comes once";
    });
}

TEST(ThreadMessages, BehaveAsAListUnderRandomUse) {
    onThread([] {
        RandomCases cases;
        auto& random = cases.generator();
        createMessageQueue();
        std::deque<std::size_t> model;
        for (std::size_t step = 0; step < 5'000; ++step) {
            ThreadMessage message;
            const unsigned choice = random() % 4;
            if (choice < 2) {
                ASSERT_TRUE(postThreadMessage(currentThreadId(), numbered(step)));
                model.push_back(step);
                continue;
            }
            ASSERT_EQ(peekThreadMessage(message, choice == 2), !model.empty()) << step;
            if (!model.empty()) {
                ASSERT_EQ(message.wParam, model.front()) << step;
                choice == 2 ? model.pop_front() : void();
            }
        }
    });
}

TEST(ThreadMessages, WakeASleepingThreadEachTime) {
    const auto echo = [](ThreadId& partner) {
        ThreadMessage message;
        while (getThreadMessage(message)) {
            postUntilAccepted(partner, message);
        }
    };
    ThreadId player = 0;
    Thread wall([&] { echo(player); });
    onThread([&] {
        createMessageQueue();
        player = currentThreadId();
        wall.resume();
        for (std::size_t round = 0; round < 3'000; ++round) {
            postUntilAccepted(wall.id(), numbered(round));
            ThreadMessage message;
            ASSERT_TRUE(getThreadMessage(message));
            ASSERT_EQ(message.wParam, round);
        }
        postUntilAccepted(wall.id(), {quitMessage, 0, 0});
        wall.join();
    });
}

TEST(ThreadMessages, OfManyPostersAllArriveEachPostersInOrder) {
    static constexpr std::size_t posters = 4;
    constexpr std::size_t each = 8'000; // together more than the queue holds
    std::array<std::size_t, posters> next{};
    Thread reader([&next] {
        ThreadMessage message;
        while (getThreadMessage(message)) {
            const auto poster = static_cast<std::size_t>(message.lParam);
            ASSERT_LT(poster, posters);
            ASSERT_EQ(message.wParam, next[poster]);
            ++next[poster];
        }
    });
    std::vector<std::unique_ptr<Thread>> threads;
    for (std::size_t poster = 0; poster < posters; ++poster) {
        threads.push_back(std::make_unique<Thread>([poster, &reader] {
            for (std::size_t i = 0; i < each; ++i) {
                postUntilAccepted(reader.id(), {number, i, static_cast<std::intptr_t>(poster)});
            }
        }));
        threads.back()->resume();
    }
    reader.resume();
    threads.clear();
    postUntilAccepted(reader.id(), {quitMessage, 0, 0});
    reader.join();
    for (const std::size_t count : next) {
        EXPECT_EQ(count, each);
    }
}

// Posters keep posting to ids of threads that start, take what is there, and end. A message that a thread sees was
// meant for that thread.
TEST(ThreadMessages, NeverReachAnotherThreadThanTheirOwn) {
    constexpr std::size_t slots = 4;
    std::array<std::atomic<ThreadId>, slots> ids{};
    std::atomic<bool> done{false};
    std::atomic<unsigned> accepted{0};
    std::vector<std::unique_ptr<Thread>> posters;
    for (int i = 0; i < 3; ++i) {
        posters.push_back(std::make_unique<Thread>([&] {
            for (std::size_t turn = 0; !done; ++turn) {
                const ThreadId id = ids[turn % slots];
                if (postThreadMessage(id, {number, id, 0})) {
                    ++accepted;
                } else {
                    sleepMilliseconds(0);
                }
            }
        }));
        posters.back()->resume();
    }
    std::atomic<unsigned> seen{0};
    for (std::size_t round = 0; round < 200; ++round) {
        Thread thread([&] {
            createMessageQueue();
            ThreadMessage message;
            for (int i = 0; i < 20; ++i) {
                if (peekThreadMessage(message, true)) {
                    EXPECT_EQ(message.wParam, currentThreadId());
                    ++seen;
                }
            }
        });
        ids[round % slots] = thread.id();
        thread.resume();
        thread.join();
        ASSERT_FALSE(postThreadMessage(thread.id(), numbered(0)));
    }
    done = true;
    posters.clear();
    EXPECT_LE(seen, accepted);
}
