#include "generators/recording/RecordQueue.h"

#include "platform/Threads.h"

#include <gtest/gtest.h>

using namespace Backend::Recording;

namespace {

TEST(RecordQueue, DropsAndCountsWhatDoesNotFit) {
    int woken = 0;
    RecordQueue queue([&woken] { return ++woken > 2; }, 4);
    for (std::uint32_t i = 0; i < 10; ++i) {
        queue.push({i, 0});
    }
    EXPECT_EQ(queue.dropped(), 6U);
    EXPECT_EQ(woken, 3) << "once it has worked";
    PlayedMessage message;
    for (std::uint32_t i = 0; i < 4; ++i) {
        ASSERT_TRUE(queue.pop(message));
        EXPECT_EQ(message.milliseconds, i) << "the oldest stay";
    }
    EXPECT_FALSE(queue.pop(message));
    queue.push({1, 0});
    EXPECT_EQ(woken, 3);
    queue.park();
    queue.push({1, 0});
    EXPECT_EQ(woken, 4);
}

TEST(RecordQueue, HandsOnEverythingInOrderBetweenThreads) {
    RecordQueue queue([] { return true; }, 64);
    constexpr std::uint32_t count = 200'000;
    std::uint32_t received = 0;
    {
        Platform::Thread popper([&queue, &received] {
            PlayedMessage message;
            while (received < count) {
                if (queue.pop(message)) {
                    ASSERT_EQ(message.milliseconds, received);
                    ASSERT_EQ(message.wire, ~received);
                    ++received;
                } else {
                    Platform::sleepMilliseconds(0);
                }
            }
        });
        popper.resume();
        for (std::uint32_t i = 0; i < count;) {
            const std::uint64_t dropped = queue.dropped();
            queue.push({i, ~i});
            queue.dropped() == dropped ? ++i : (Platform::sleepMilliseconds(0), i);
        }
    }
    EXPECT_EQ(received, count);
}

} // namespace
