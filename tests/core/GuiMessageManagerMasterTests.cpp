#include "core/GuiMessageManager.h"
#include "core/GuiMessageManagerMaster.h"

#include <gtest/gtest.h>
#include <thread>

namespace Backend {
namespace {

constexpr std::uint32_t base = Platform::applicationMessage + 300;

class TestManager final : public GuiMessageManager {
public:
    TestManager(std::uint32_t first, std::uint32_t last) : first_(first), last_(last) {}
    bool wantMessage(std::uint32_t id) const override { return id >= first_ && id <= last_; }
    void handleMessage(std::uint32_t id, std::uintptr_t wParam, std::intptr_t lParam) override {
        handled.emplace_back(id, wParam, lParam);
    }
    using Messages = std::vector<std::tuple<std::uint32_t, std::uintptr_t, std::intptr_t>>;
    Messages handled;

private:
    std::uint32_t first_;
    std::uint32_t last_;
};

TEST(GuiMessageManagerMaster, GivesEachMessageToTheFirstThatWantsIt) {
    GuiMessageManagerMaster master;
    TestManager first(base, base + 2);
    TestManager second(base + 2, base + 4);
    master.addMessageManager(first);
    master.addMessageManager(second);
    for (const std::uint32_t id : {base + 4, base + 2, base, base + 5}) {
        EXPECT_EQ(master.wantMessage(id), id != base + 5);
        EXPECT_EQ(master.handleMessage(nullptr, id, id - base, -1), 0);
    }
    EXPECT_EQ(first.handled, (TestManager::Messages{{base + 2, 2, -1}, {base, 0, -1}}));
    EXPECT_EQ(second.handled, (TestManager::Messages{{base + 4, 4, -1}}));
}

TEST(GuiMessageManagerMaster, PostsThroughAWindowOnce) {
    GuiMessageManagerMaster master;
    TestManager manager(base, base);
    master.addMessageManager(manager);
    Platform::WindowHandle window = nullptr;
    window = Platform::createWindowEndpoint([&](const Platform::ThreadMessage& message) {
        master.handleMessage(window, message.id, message.wParam, message.lParam);
    });
    std::thread([&] { EXPECT_TRUE(master.postMessage(window, base, 7, -7)); }).join();
    EXPECT_TRUE(manager.handled.empty());
    EXPECT_TRUE(Platform::dispatchWindowMessages());
    EXPECT_EQ(manager.handled, (TestManager::Messages{{base, 7, -7}}));
    Platform::destroyWindowEndpoint(window);
    EXPECT_FALSE(master.postMessage(window, base)) << "no retry, no wait";
    EXPECT_FALSE(master.postMessage(nullptr, base));
}

TEST(GuiMessageManagerMaster, KnowsItsThread) {
    GuiMessageManagerMaster master;
    EXPECT_FALSE(master.currentThreadIsManagerThread());
    master.setThreadId(Platform::currentThreadId());
    EXPECT_TRUE(master.currentThreadIsManagerThread());
    std::thread([&] { EXPECT_FALSE(master.currentThreadIsManagerThread()); }).join();
}

} // namespace
} // namespace Backend
