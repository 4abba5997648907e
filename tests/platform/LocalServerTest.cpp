#include "platform/LocalServer.h"

#include "platform/SafeFiles.h"
#include "platform/Threads.h"
#include "support/TemporaryFolder.h"

#include <atomic>
#include <gtest/gtest.h>
#include <random>

using namespace Platform;
using namespace std::chrono_literals;

namespace {

std::string freshName() {
    return "test-" + std::to_string(std::random_device()());
}

std::string answerOf(const std::string& name, const std::string& question) {
    const auto answer = askLocalServer(name, question, 20s);
    return !answer ? "fault: " + answer.fault().text() : answer.value().value_or("nobody");
}

TEST(LocalServer, AnswersOneAfterTheOtherWhateverTheTextIs) {
    const std::string name = freshName();
    EXPECT_EQ(answerOf(name, "?"), "nobody");
    {
        int asked = 0;
        const LocalServer server(name, [&asked](const std::string& question) {
            ++asked;
            return question + question;
        });
        ASSERT_TRUE(server.state()) << server.state().fault().text();
        const std::string everyByte = [] {
            std::string text;
            for (int i = 0; i < 256; ++i) {
                text += static_cast<char>(i);
            }
            return text;
        }();
        for (const std::string& text : {std::string("save 1"), everyByte, std::string(400'000, 'x')}) {
            EXPECT_EQ(answerOf(name, text), text + text);
        }
        EXPECT_EQ(asked, 3);
        EXPECT_EQ(answerOf(freshName(), "?"), "nobody");
    }
    EXPECT_EQ(answerOf(name, "?"), "nobody");
    const LocalServer again(name, [](const std::string&) { return "again"; });
    EXPECT_EQ(answerOf(name, "?"), "again");
}

TEST(LocalServer, GivesANameToOneServer) {
    const std::string name = freshName();
    const LocalServer first(name, [](const std::string&) { return "first"; });
    {
        const LocalServer second(name, [](const std::string&) { return "second"; });
        EXPECT_FALSE(second.state());
    }
    EXPECT_EQ(answerOf(name, "?"), "first");
}

TEST(LocalServer, ServesManyAtOnce) {
    const std::string name = freshName();
    std::atomic<int> inside = 0;
    const LocalServer server(name, [&inside](const std::string& question) {
        EXPECT_EQ(++inside, 1);
        sleepMilliseconds(0);
        --inside;
        return question;
    });
    std::vector<std::unique_ptr<Thread>> askers;
    for (int asker = 0; asker < 4; ++asker) {
        askers.push_back(std::make_unique<Thread>([asker, &name] {
            for (int i = 0; i < 25; ++i) {
                const std::string text = std::to_string(asker) + " " + std::to_string(i);
                ASSERT_EQ(answerOf(name, text), text);
            }
        }));
        askers.back()->resume();
    }
}

TEST(FileLock, WithoutPatienceIsRefused) {
    const TemporaryFolder folder;
    auto held = std::make_unique<FileLock>(folder.path() / "lock");
    EXPECT_FALSE(FileLock(folder.path() / "lock", FileLock::Patience::none).isHeld());
    held.reset();
    EXPECT_TRUE(FileLock(folder.path() / "lock", FileLock::Patience::none).isHeld());
}

} // namespace
