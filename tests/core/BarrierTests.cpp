#include "core/Barrier.h"

#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace Backend {
namespace {

TEST(Barrier, ShowsTheWaiterWhatWasDoneBeforeItOpened) {
    for (int round = 0; round < 500; ++round) {
        int work = 0;
        auto barrier = std::make_unique<Barrier>();
        std::thread opener([&work, gate = barrier.get()] {
            work = 1;
            gate->open();
        });
        barrier->wait();
        EXPECT_EQ(work, 1);
        barrier.reset(); // while open() may still be on its way out
        opener.join();
    }
}

TEST(Barrier, WakesOnceAndAfterItIsOpen) {
    int wakes = 0;
    const Barrier* seen = nullptr;
    Barrier barrier([&] { wakes += seen->isOpen() ? 1 : 100; });
    seen = &barrier;
    EXPECT_FALSE(barrier.isOpen());
    EXPECT_FALSE(barrier.waitFor(std::chrono::nanoseconds{0}));
    barrier.open();
    barrier.open();
    barrier.wait();
    EXPECT_TRUE(barrier.isOpen());
    EXPECT_TRUE(barrier.waitFor(std::chrono::nanoseconds{0}));
    EXPECT_EQ(wakes, 1);
}

} // namespace
} // namespace Backend
