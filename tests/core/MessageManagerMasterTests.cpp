#include "core/Barrier.h"
#include "core/MessageManager.h"
#include "core/MessageManagerMaster.h"

#include <functional>
#include <gtest/gtest.h>
#include <thread>

namespace Backend {
namespace {

constexpr std::uint32_t base = Platform::applicationMessage + 300;

// Wants the ids from `first` to `last`, keeps what it handles and does with it what the test says.
class TestManager final : public MessageManager {
public:
    using Action = std::function<void(TestManager&, const Platform::ThreadMessage&)>;

    TestManager(MessageManagerMaster& master, std::uint32_t first, std::uint32_t last, Action action = {})
        : MessageManager(master), first_(first), last_(last), action_(std::move(action)) {}

    bool wantMessage(std::uint32_t id) const override { return id >= first_ && id <= last_; }
    void handleMessage(const Platform::ThreadMessage& message) override {
        onManagerThread = onManagerThread && currentThreadIsManagerThread();
        handled.push_back(message.id);
        parameters.emplace_back(message.wParam, message.lParam);
        if (action_) {
            action_(*this, message);
        }
    }

    // A blocking send with a result: the parameter doubled, -1 when nobody answered.
    int sendDouble(int value) {
        result = -1;
        if (post(first_, static_cast<std::uintptr_t>(value))) {
            awaitSend();
        }
        return result;
    }
    using MessageManager::endSend;

    // Read by the test after stop().
    std::vector<std::uint32_t> handled;
    std::vector<std::pair<std::uintptr_t, std::intptr_t>> parameters;
    bool onManagerThread = true;
    int result = 0;

private:
    std::uint32_t first_;
    std::uint32_t last_;
    Action action_;
};

using Ids = std::vector<std::uint32_t>;

// A started master that is held up within a message until it may go on. Its manager wants base to base + 5.
class HeldMaster final {
public:
    explicit HeldMaster(const std::string& name) : master(name) {
        master.addMessageManager(blocker_);
        master.addMessageManager(manager);
        master.start();
        master.postMessage(base + 9);
        entered_.wait();
    }
    void goOn() { goOn_.open(); }

    MessageManagerMaster master;
    TestManager manager{master, base, base + 5};

private:
    Barrier entered_;
    Barrier goOn_;
    TestManager blocker_{master, base + 9, base + 9, [this](TestManager&, const Platform::ThreadMessage&) {
                             entered_.open();
                             goOn_.wait();
                         }};
};

TEST(MessageManagerMaster, KeepsTheOrderOfEachPosterAndRunsAllOnItsThread) {
    constexpr std::uintptr_t posters = 4;
    constexpr std::intptr_t perPoster = 5000; // more than the queue holds
    MessageManagerMaster master("order");
    TestManager manager(master, base, base);
    master.addMessageManager(manager);
    master.start();
    EXPECT_FALSE(master.currentThreadIsManagerThread());
    std::vector<std::thread> threads;
    for (std::uintptr_t poster = 0; poster < posters; ++poster) {
        threads.emplace_back([&master, poster] {
            for (std::intptr_t i = 0; i < perPoster; ++i) {
                master.postMessage(base, poster, i);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    master.stop();

    EXPECT_TRUE(manager.onManagerThread);
    std::intptr_t next[posters] = {};
    for (const auto& [poster, number] : manager.parameters) {
        ASSERT_EQ(number, next[poster]++) << "of poster " << poster;
    }
    EXPECT_EQ(manager.handled.size(), posters * perPoster);
}

TEST(MessageManagerMaster, StopHandlesWhatIsAheadAndLosesWhatIsBehind) {
    HeldMaster held("stop");
    held.master.postMessage(base + 1);
    held.master.postMessage(MessageManagerMaster::STOP_MESSAGE);
    held.master.postMessage(base + 2);
    held.goOn();
    held.master.stop();
    EXPECT_EQ(held.manager.handled, (Ids{base + 1}));
    EXPECT_FALSE(held.master.postMessage(base + 3)) << "a stopped master takes nothing, and keeps nobody waiting";
}

TEST(MessageManagerMaster, ASenderWhoseMessageIsLostBehindTheStopIsLetGo) {
    HeldMaster held("lost send");
    held.master.postMessage(MessageManagerMaster::STOP_MESSAGE);
    std::thread sender([&] { EXPECT_EQ(held.manager.sendDouble(21), -1); });
    held.goOn();
    sender.join();
    held.master.stop();
    EXPECT_TRUE(held.manager.handled.empty());
}

TEST(MessageManagerMaster, TheFirstManagerThatWantsAMessageIsTheOnlyOneToSeeIt) {
    MessageManagerMaster master("ranges");
    TestManager first(master, base, base + 5);
    TestManager second(master, base + 4, base + 8);
    master.addMessageManager(first);
    master.addMessageManager(second);
    master.start();
    for (const std::uint32_t id : {base + 8, base + 5, base + 4, base, base + 6, base + 9}) {
        master.postMessage(id);
    }
    master.stop();
    EXPECT_EQ(first.handled, (Ids{base + 5, base + 4, base}));
    EXPECT_EQ(second.handled, (Ids{base + 8, base + 6})) << "what nobody wants is dropped";
}

TEST(MessageManagerMaster, APostBeforeTheStartArrivesAfterIt) {
    MessageManagerMaster master("early");
    TestManager manager(master, base, base + 1);
    master.addMessageManager(manager);
    EXPECT_FALSE(master.tryPostMessage(base));
    Barrier posting;
    std::thread poster([&] {
        posting.open();
        EXPECT_TRUE(master.postMessage(base + 1));
    });
    posting.wait();
    master.start();
    poster.join();
    master.stop();
    EXPECT_EQ(manager.handled, (Ids{base + 1}));
}

TEST(MessageManagerMaster, AFullQueueKeepsPostersWaitingAndLosesNothing) {
    HeldMaster held("full");
    std::size_t accepted = 0;
    while (held.master.tryPostMessage(base + 1)) {
        ++accepted;
    }
    EXPECT_GE(accepted, Platform::messageQueueCapacity - 1);
    Barrier posting;
    std::thread poster([&] {
        posting.open();
        EXPECT_TRUE(held.master.postMessage(base + 2));
    });
    posting.wait();
    held.goOn();
    poster.join();
    held.master.stop();
    ASSERT_EQ(held.manager.handled.size(), accepted + 1);
    EXPECT_EQ(held.manager.handled.back(), base + 2);
}

TEST(MessageManagerMaster, ASendComesBackWithTheResultOfItsHandler) {
    MessageManagerMaster master("send");
    TestManager manager(master, base, base, [](TestManager& self, const Platform::ThreadMessage& message) {
        self.result = 2 * static_cast<int>(message.wParam);
        self.endSend();
    });
    master.addMessageManager(manager);
    master.start();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(manager.sendDouble(i), 2 * i);
    }
    master.stop();
    EXPECT_EQ(manager.sendDouble(1), -1);
}

TEST(MessageManagerMaster, AQuitMessageEndsTheThreadToo) {
    MessageManagerMaster master("quit");
    TestManager manager(master, base, base,
                        [](TestManager&, const Platform::ThreadMessage&) { Platform::postQuitMessage(); });
    master.addMessageManager(manager);
    master.start();
    master.postMessage(base);
    while (master.postMessage(base + 1)) {
        std::this_thread::yield(); // until the thread has ended
    }
    master.stop();
    EXPECT_EQ(manager.handled, (Ids{base}));
}

TEST(MessageManagerMaster, ManyLivesLeaveNothingBehind) {
    for (int life = 0; life < 50; ++life) {
        MessageManagerMaster master("life");
        TestManager manager(master, base, base);
        master.addMessageManager(manager);
        master.start();
        master.postMessage(base);
        master.stop();
        ASSERT_EQ(manager.handled.size(), 1u);
    }
}

} // namespace
} // namespace Backend
