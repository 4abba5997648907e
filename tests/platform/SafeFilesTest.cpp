#include "platform/SafeFiles.h"

#include "platform/Folders.h"
#include "platform/Notices.h"
#include "platform/ReplacingChild.h"
#include "platform/Threads.h"
#include "support/FileContent.h"
#include "support/RandomCases.h"
#include "support/TemporaryFolder.h"

#include <atomic>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

using namespace Platform;
using TestSupport::contentOf;
namespace fs = std::filesystem;

namespace {

std::size_t filesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

} // namespace

TEST(Fault, SaysWhatIsKnown) {
    EXPECT_EQ((Fault{"a.prg", 3, "bad"}.text()), "a.prg:3: bad");
    EXPECT_EQ((Fault{"a.prg", 0, "bad"}.text()), "a.prg: bad");
    EXPECT_EQ((Fault{"", 0, "bad"}.text()), "bad");
    EXPECT_EQ((Fault{"", 3, "bad"}.text()), "line 3: bad");
    // A terminal obeys control characters, those of UTF-8 as well.
    EXPECT_EQ((Fault{"a\x1B]0;b.prg", 3,
                     "<\xC2\x9B"
                     "31m\x7F\n\xC3\x9C\xC2\xA0>"}
                   .text()),
              "a?]0;b.prg:3: <?31m??\xC3\x9C\xC2\xA0>");
}

TEST(SafeFiles, ReplaceWritesExactlyTheContentAndLeavesNothingBeside) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / u8"Übung 1.txt";
    std::string everyByte;
    for (int i = 0; i < 256; ++i) {
        everyByte += static_cast<char>(i);
    }
    for (const std::string& content : {std::string("one\r\n"), std::string(), everyByte, std::string(300'000, 'x')}) {
        ASSERT_TRUE(replaceFile(file, content)) << replaceFile(file, content).fault().text();
        EXPECT_EQ(contentOf(file), content);
        EXPECT_EQ(filesIn(folder.path()), 1U);
    }
}

TEST(SafeFiles, AFailedReplaceLeavesEverythingAsItWas) {
    const TemporaryFolder folder;
    const fs::path inTheWay = folder.path() / "folder";
    fs::create_directories(inTheWay / "full");
    const Outcome outcome = replaceFile(inTheWay, "content");
    ASSERT_FALSE(outcome);
    EXPECT_FALSE(outcome.fault().reason.empty());
    EXPECT_TRUE(fs::is_directory(inTheWay / "full"));
    EXPECT_EQ(filesIn(folder.path()), 1U);
    EXPECT_FALSE(replaceFile(folder.path() / "missing" / "file", "content"));
}

TEST(FileReplacement, ChangesNothingBeforeItsEnd) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "file";
    ASSERT_TRUE(replaceFile(file, "old"));
    {
        FileReplacement given(file);
        ASSERT_TRUE(given.open());
        ASSERT_TRUE(given.append("half"));
        EXPECT_EQ(filesIn(folder.path()), 2U);
    }
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(filesIn(folder.path()), 1U);
    FileReplacement whole(file);
    ASSERT_TRUE(whole.open());
    ASSERT_TRUE(whole.append("ne"));
    ASSERT_TRUE(whole.append("w"));
    EXPECT_EQ(contentOf(file), "old");
    ASSERT_TRUE(whole.commit(Survives::process));
    EXPECT_EQ(contentOf(file), "new");
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(SafeFiles, WhatKilledWritersLeftIsRemoved) {
    const TemporaryFolder folder;
    const auto create = [&](const char* name) { std::ofstream(folder.path() / name) << "half"; };
    for (const char* const name :
         {".tmp-abcdefghijklmn27", ".tmp-zzzzzzzzzzzzzzzz", ".tmp-ZYXWVUTSRQPONM27", ".tmp-mine",
          ".tmp-abcdefghijklmn27.txt", "x.tmp-abcdefghijklmn27", ".tmp-livingwriteraaa"}) {
        create(name);
    }
    fs::create_directory(folder.path() / ".tmp-folderfolderfold");
    const FileLock living(folder.path() / ".tmp-livingwriteraaa");
    ASSERT_TRUE(replaceFile(folder.path() / "file", "content"));
    std::set<std::string> left;
    for (const fs::directory_entry& each : fs::directory_iterator(folder.path())) {
        left.insert(each.path().filename().string());
    }
    EXPECT_EQ(left,
              (std::set<std::string>{".tmp-ZYXWVUTSRQPONM27", ".tmp-abcdefghijklmn27.txt", ".tmp-folderfolderfold",
                                     ".tmp-livingwriteraaa", ".tmp-mine", "file", "x.tmp-abcdefghijklmn27"}));
}

TEST(SafeFiles, AProcessTornAwayLeavesTheOldFileOrTheNew) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "file";
    RandomCases random;
    for (int round = 0; round < 8; ++round) {
        ASSERT_TRUE(startReplacingChild(file, random.number(0, 40)));
        if (fs::exists(file)) {
            const std::string content = contentOf(file);
            EXPECT_EQ(content, contentOfTurn(std::atoi(content.c_str()))) << round;
        }
    }
    ASSERT_TRUE(replaceFile(file, "last"));
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(SafeFiles, AReadOnlyFileIsNotReplaced) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "file";
    ASSERT_TRUE(replaceFile(file, "old"));
    constexpr fs::perms write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    fs::permissions(file, write, fs::perm_options::remove);
    EXPECT_FALSE(replaceFile(file, "new"));
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(filesIn(folder.path()), 1U);
    fs::permissions(file, write, fs::perm_options::add);
    EXPECT_TRUE(replaceFile(file, "new"));
}

TEST(SafeFiles, ReplaceKeepsALinkALink) {
    const TemporaryFolder folder;
    const fs::path target = folder.path() / "target";
    const fs::path link = folder.path() / "link";
    ASSERT_TRUE(replaceFile(target, "old"));
    std::error_code error;
    fs::create_symlink("target", link, error);
    if (error) {
        GTEST_SKIP() << "no links to be had here: " << error.message();
    }
    ASSERT_TRUE(replaceFile(link, "new"));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(contentOf(target), "new");
}

TEST(SafeFiles, ReadersSeeTheOldOrTheNewContentWhole) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "file";
    const std::string contents[] = {std::string(50'000, 'a'), std::string(70'000, 'b')};
    ASSERT_TRUE(replaceFile(file, contents[0]));
    std::atomic<bool> done{false};
    std::atomic<int> reads{0};
    Thread reader([&] {
        while (!done) {
            const auto seen = readWholeFile(file, 100'000);
            if (seen) { // on Windows a moment without the file, or with it shut, may be met
                ASSERT_TRUE(seen.value() == contents[0] || seen.value() == contents[1]) << seen.value().size();
                ++reads;
            }
            sleepMilliseconds(0);
        }
    });
    reader.resume();
    for (std::size_t round = 0; round < 50 || reads < 5; ++round) {
        const Outcome outcome = replaceFile(file, contents[round % 2]);
        EXPECT_TRUE(outcome) << outcome.fault().text();
    }
    done = true;
    reader.join();
}

TEST(SafeFiles, ReadingIsBounded) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "file";
    ASSERT_TRUE(replaceFile(file, std::string(1'000, 'x')));
    EXPECT_TRUE(readWholeFile(file, 1'000));
    EXPECT_FALSE(readWholeFile(file, 999));
    EXPECT_FALSE(readWholeFile(folder.path() / "missing", 999));
    EXPECT_FALSE(readWholeFile(folder.path(), 999));
}

TEST(FileLock, LetsOneHolderInAtATime) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "lock";
    std::atomic<int> inside{0};
    std::atomic<int> turns{0};
    {
        std::vector<std::unique_ptr<Thread>> threads;
        for (int i = 0; i < 4; ++i) {
            threads.push_back(std::make_unique<Thread>([&] {
                for (int turn = 0; turn < 100; ++turn) {
                    const FileLock lock(file);
                    ASSERT_TRUE(lock.isHeld());
                    ASSERT_EQ(++inside, 1);
                    sleepMilliseconds(0);
                    --inside;
                    ++turns;
                }
            }));
            threads.back()->resume();
        }
    }
    EXPECT_EQ(turns, 400);
    EXPECT_FALSE(FileLock(folder.path() / "missing" / "lock").isHeld());
}

TEST(Folders, AreThereAndAbsolute) {
    for (const fs::path& folder : {localApplicationDataFolder(), configurationFolder()}) {
        EXPECT_TRUE(folder.is_absolute()) << folder;
        EXPECT_TRUE(fs::is_directory(folder)) << folder;
    }
}

TEST(Notices, GoToTheHandlersWhileThereAreAny) {
    std::string boxes;
    std::string lines;
    setMessageBoxHandler([&](const std::string& text, const std::string& caption) { boxes += caption + '|' + text; });
    setDebugOutputHandler([&](const std::string& line) { lines += line; });
    showMessageBox("text", "ERROR");
    writeDebugOutput("line");
    setDebugOutputHandler({});
    setMessageBoxHandler({});
    writeDebugOutput("not handled");
    EXPECT_EQ(boxes, "ERROR|text");
    EXPECT_EQ(lines, "line");
}

TEST(Notices, ADocumentThatIsNotThereCannotBeOpened) {
    const TemporaryFolder folder;
    EXPECT_FALSE(openDocument(folder.path() / "missing.htm"));
}
