#include "platform/WindowMessages.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

using namespace Platform;

namespace {

constexpr std::uint32_t number = applicationMessage + 3;

// An endpoint of the calling thread that keeps what it was given.
struct Recorder {
    std::vector<std::uintptr_t> seen;
    WindowHandle window =
        createWindowEndpoint([this](const ThreadMessage& message) { seen.push_back(message.wParam); });

    Recorder() = default;
    ~Recorder() { destroyWindowEndpoint(window); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
};

} // namespace

TEST(WindowMessages, ReachTheirEndpointInOrderWhenItsThreadDispatches) {
    Recorder first;
    Recorder second;
    for (std::uintptr_t i = 0; i < 5; ++i) {
        EXPECT_TRUE(postWindowMessage(i % 2 == 0 ? first.window : second.window, {number, i, 0}));
    }
    EXPECT_TRUE(first.seen.empty());
    EXPECT_TRUE(dispatchWindowMessages());
    EXPECT_EQ(first.seen, (std::vector<std::uintptr_t>{0, 2, 4}));
    EXPECT_EQ(second.seen, (std::vector<std::uintptr_t>{1, 3}));
    EXPECT_TRUE(dispatchWindowMessages());
    EXPECT_EQ(first.seen.size(), 3U);
}

TEST(WindowMessages, AreRefusedWithoutEndpointWhenFullAndForNumbersOfTheSystem) {
    WindowHandle gone = nullptr;
    {
        Recorder recorder;
        gone = recorder.window;
        EXPECT_FALSE(postWindowMessage(recorder.window, {quitMessage, 0, 0}));
        EXPECT_FALSE(postWindowMessage(recorder.window, {0x1'0000, 0, 0}));
        for (std::size_t i = 0; i < messageQueueCapacity; ++i) {
            ASSERT_TRUE(postWindowMessage(recorder.window, {number, i, 0}));
        }
        EXPECT_FALSE(postWindowMessage(recorder.window, {number, 0, 0}));
        EXPECT_TRUE(dispatchWindowMessages());
        EXPECT_EQ(recorder.seen.size(), messageQueueCapacity);
        EXPECT_TRUE(postWindowMessage(recorder.window, {number, 0, 0}));
    }
    EXPECT_FALSE(postWindowMessage(gone, {number, 0, 0}));
    EXPECT_FALSE(postWindowMessage(nullptr, {number, 0, 0}));
    destroyWindowEndpoint(gone);
    EXPECT_TRUE(dispatchWindowMessages());
}

TEST(WindowMessages, QuitEndsDispatchingAndOtherThreadMessagesAreDropped) {
    Recorder recorder;
    createMessageQueue();
    EXPECT_TRUE(postThreadMessage(currentThreadId(), {number, 1, 0}));
    EXPECT_TRUE(postWindowMessage(recorder.window, {number, 2, 0}));
    EXPECT_TRUE(dispatchWindowMessages());
    ThreadMessage message;
    EXPECT_FALSE(peekThreadMessage(message, false)) << "dropped";
    EXPECT_TRUE(postWindowMessage(recorder.window, {number, 3, 0}));
    EXPECT_TRUE(postThreadMessage(currentThreadId(), {quitMessage, 0, 0}));
    EXPECT_FALSE(dispatchWindowMessages());
    EXPECT_EQ(recorder.seen, (std::vector<std::uintptr_t>{2, 3}));
    EXPECT_TRUE(dispatchWindowMessages()) << "the quit message is gone";
}

TEST(WindowMessages, HandlersMayCreatePostAndDestroy) {
    std::vector<int> calls;
    WindowHandle inner = nullptr;
    WindowHandle outer = nullptr;
    const auto held = std::make_shared<int>(0);
    outer = createWindowEndpoint([&, held](const ThreadMessage&) {
        calls.push_back(1);
        inner = createWindowEndpoint([&](const ThreadMessage&) { calls.push_back(2); });
        EXPECT_TRUE(postWindowMessage(inner, {number, 0, 0}));
        EXPECT_TRUE(postWindowMessage(outer, {number, 0, 0}));
        destroyWindowEndpoint(outer); // the second message to it is lost, the handler lives on until it returns
        EXPECT_GE(held.use_count(), 2);
    });
    EXPECT_TRUE(postWindowMessage(outer, {number, 0, 0}));
    EXPECT_TRUE(dispatchWindowMessages());
    EXPECT_EQ(calls, (std::vector<int>{1, 2}));
    EXPECT_EQ(held.use_count(), 1);
    destroyWindowEndpoint(inner);
}

TEST(WindowMessages, OfOtherThreadsWakeTheOwnerAndAreHandledThere) {
    constexpr unsigned posters = 3;
    constexpr unsigned each = 2'000;
    std::atomic<unsigned> wakes{0};
    unsigned handled = 0;
    const ThreadId self = currentThreadId();
    const WindowHandle window = createWindowEndpoint(
        [&](const ThreadMessage&) {
            EXPECT_EQ(currentThreadId(), self);
            ++handled;
        },
        [&] { ++wakes; });
    std::vector<std::unique_ptr<Thread>> threads;
    for (unsigned i = 0; i < posters; ++i) {
        threads.push_back(std::make_unique<Thread>([window] {
            for (unsigned message = 0; message < each; ++message) {
                while (!postWindowMessage(window, {number, message, 0})) {
                    sleepMilliseconds(0);
                }
            }
            destroyWindowEndpoint(window); // not its owner: nothing happens
        }));
        threads.back()->resume();
    }
    while (handled < posters * each) {
        ASSERT_TRUE(dispatchWindowMessages());
        sleepMilliseconds(0);
    }
    threads.clear();
    EXPECT_EQ(wakes, posters * each);
    destroyWindowEndpoint(window);
}

TEST(WindowMessages, EndpointsEndWithTheirThreadAlsoUnderPosters) {
    std::atomic<WindowHandle> current{nullptr};
    std::atomic<bool> done{false};
    Thread poster([&] {
        while (!done) {
            if (!postWindowMessage(current, {number, 0, 0})) {
                sleepMilliseconds(0);
            }
        }
    });
    poster.resume();
    for (int round = 0; round < 20; ++round) {
        Thread thread([&] {
            current = createWindowEndpoint([](const ThreadMessage&) {});
            EXPECT_TRUE(dispatchWindowMessages());
        });
        thread.resume();
        thread.join();
        ASSERT_FALSE(postWindowMessage(current, {number, 0, 0}));
    }
    done = true;
}
