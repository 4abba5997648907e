#include "platform/ChangeLock.h"

#include "platform/Clocks.h"
#include "platform/SafeFiles.h"
#include "platform/Threads.h"
#include "support/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using namespace Platform;
namespace fs = std::filesystem;

namespace {

std::size_t filesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

} // namespace

TEST(ChangeLock, OneAfterTheOtherReadsChangesAndWritesBack) {
    constexpr int turns = 50;
    const TemporaryFolder folder;
    const fs::path file = folder.path() / std::string(240, 'n'); // longer than a name of a lock could be
    std::ofstream(file) << 0;
    const auto count = [&file] {
        for (int turn = 0; turn < turns; ++turn) {
            const ChangeLock alone(file);
            ASSERT_TRUE(alone.state()) << alone.state().fault().text();
            const auto number = readWholeFile(file, 100);
            ASSERT_TRUE(number) << number.fault().text();
            ASSERT_TRUE(replaceFile(file, std::to_string(std::stoi(number.value()) + 1)));
        }
    };
    std::vector<std::unique_ptr<Thread>> threads;
    for (int i = 0; i < 4; ++i) {
        threads.push_back(std::make_unique<Thread>(count));
        threads.back()->resume();
    }
    threads.clear();
    EXPECT_EQ(readWholeFile(file, 100).value(), std::to_string(4 * turns));
    EXPECT_EQ(filesIn(folder.path()), 1U) << "no lock is left";
}

TEST(ChangeLock, WhoDoesNotLetGoIsWaitedForInVain) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "file";
    auto first = std::make_unique<ChangeLock>(file);
    ASSERT_TRUE(first->state());
    const auto start = monotonicTime();
    const ChangeLock second(file);
    EXPECT_GE(monotonicTime() - start, FileLock::usualPatience);
    ASSERT_FALSE(second.state());
    EXPECT_NE(second.state().fault().text().find("file: another program is changing it"), std::string::npos);
    EXPECT_TRUE(ChangeLock(folder.path() / "other").state());
    first.reset();
    EXPECT_TRUE(ChangeLock(file).state());
    EXPECT_EQ(filesIn(folder.path()), 0U);
}

TEST(ChangeLock, WhatAKilledHolderLeftAndPlacesWithoutLocksKeepNobodyOut) {
    const TemporaryFolder folder;
    std::ofstream(folder.path() / ".lock-file") << "";
    EXPECT_TRUE(ChangeLock(folder.path() / "file").state());
    EXPECT_EQ(filesIn(folder.path()), 0U);
    EXPECT_TRUE(ChangeLock(folder.path() / "missing" / "file").state());
    fs::create_directory(folder.path() / ".lock-file");
    EXPECT_TRUE(ChangeLock(folder.path() / "file").state());
}
