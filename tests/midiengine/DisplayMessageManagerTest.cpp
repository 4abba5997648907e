// The display thread and its records.
#include "midiengine/DisplayMessageManager.h"

#include "EngineRig.h"
#include "platform/Threads.h"

#include <atomic>
#include <gtest/gtest.h>

namespace {

using Backend::Display::DisplayListener;
using Backend::Display::DisplayMessageManager;
using Backend::Display::DisplayRecord;

struct Listener : DisplayListener {
    virtual ~Listener() = default;
    std::vector<std::string> seen; // read after removeListener
    void messageSent(const DisplayRecord& record) override {
        seen.push_back(std::to_string(record.milliseconds) + " " + std::to_string(record.output) + " " +
                       std::to_string(record.message.getStatusWithChannel()) + " " +
                       std::to_string(record.message.getD1()) + " " + std::to_string(record.message.getD2()));
    }
};

// Does not come back from the first record until it is let go.
struct SlowListener final : Listener {
    Platform::AutoResetEvent entered;
    Platform::AutoResetEvent goOn;
    void messageSent(const DisplayRecord& record) override {
        if (seen.empty()) {
            entered.signal();
            goOn.wait();
        }
        Listener::messageSent(record);
    }
};

class DisplayMessageManagerTest : public testing::Test {
protected:
    EngineRig rig{R"(<Layer output="1" channel="2"/>)"};
    std::uint32_t time = 1000;
    DisplayMessageManager display{rig.engine, [this] { return time++; }};
    Listener first;
    Listener second;
};

TEST_F(DisplayMessageManagerTest, ListenersSeeWhatIsSentWhileTheyListen) {
    rig.run("on 59 1");
    display.addListener(first);
    rig.run("on 60 1; on 60 2 in=1; off 60");
    display.addListener(second);
    display.removeListener(first); // not the last: what is on its way may be lost to it
    rig.run("thru off; cc 7 9; off 60 in=1");
    display.removeListener(second);
    rig.run("on 61 1");
    display.addListener(second);
    rig.run("cc 1 2");
    display.removeListener(second);
    const std::vector<std::string> all{"1000 1 146 60 1", "1001 1 146 60 2", "1002 1 178 7 9", "1003 1 130 60 64"};
    ASSERT_GE(second.seen.size(), 3U);
    EXPECT_EQ(second.seen.back(), "1004 1 178 1 2");
    second.seen.pop_back();
    EXPECT_TRUE(std::equal(second.seen.rbegin(), second.seen.rend(), all.rbegin()));
    EXPECT_TRUE(std::equal(first.seen.begin(), first.seen.end(), all.begin()));
    EXPECT_EQ(display.droppedRecords(), 0U);
}

TEST(DisplayRecordTest, NamesTheLayerThatSent) {
    struct Layers final : DisplayListener {
        std::string seen;
        void messageSent(const DisplayRecord& record) override {
            seen += (seen.empty() ? "" : " ") + std::to_string(record.layer);
        }
    };
    const std::string arpeggio =
        R"(<Layer minNote="C5"><Arpeggio><UpArpeggio beat="1" length="1"/></Arpeggio></Layer>)";
    for (const auto& [steps, layers] : std::initializer_list<std::pair<const char*, const char*>>{
             {"on 40 1; off 40", "0 0"},
             {"on 60 1; off 60", "1 1"},
             {"on 60 1 out=1; off 60 out=1", "-1 -1"},
             {"on 40 1; reset", "0 -1"},
             {"cc 7 1", "0"}, // both send there: once
             {"with on 90 1; wait 3; off 90; wait 2", "2 2 2 2"},
         }) {
        EngineRig rig(R"(<Layer maxNote="B3"/><Layer minNote="C4" maxNote="B4"/>)" + arpeggio);
        DisplayMessageManager display(rig.engine, [] { return 0U; });
        Layers listener;
        display.addListener(listener);
        rig.run(steps);
        display.removeListener(listener);
        EXPECT_TRUE(listener.seen.starts_with(layers)) << steps << ": " << listener.seen;
    }
}

TEST_F(DisplayMessageManagerTest, TheClockNeverWaitsAndWhatIsTooMuchIsCounted) {
    SlowListener slow;
    display.addListener(slow);
    rig.run("cc 0 0");
    slow.entered.wait();
    const std::size_t count = DisplayMessageManager::capacity + 100;
    for (std::size_t i = 0; i < count; ++i) {
        rig.run("cc 1 " + std::to_string(i % 128));
    }
    EXPECT_EQ(display.droppedRecords(), 101U);
    slow.goOn.signal();
    display.removeListener(slow);
    EXPECT_EQ(slow.seen.size(), DisplayMessageManager::capacity);
    EXPECT_EQ(slow.seen.back(), std::to_string(1000 + slow.seen.size() - 1) + " 1 178 1 " +
                                    std::to_string((DisplayMessageManager::capacity - 2) % 128));
}

TEST_F(DisplayMessageManagerTest, ListenersComeAndGoWhileItPlays) {
    std::atomic<bool> done = false;
    Platform::Thread clock([&] {
        while (!done) {
            rig.run("on 60 1; off 60");
        }
    });
    clock.resume();
    for (int i = 0; i < 100; ++i) {
        display.addListener(first);
        display.addListener(second);
        display.removeListener(first);
        display.removeListener(second);
    }
    done = true;
    clock.join();
}

} // namespace
