#include "core/Trace.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>
#include <vector>

namespace Backend {
namespace {

namespace fs = std::filesystem;

// An empty folder for one test.
class TraceFile : public testing::Test {
protected:
    TraceFile() {
        fs::remove_all(folder);
        fs::create_directory(folder);
    }
    ~TraceFile() override { fs::remove_all(folder); }
    [[nodiscard]] std::string content(const char* name = "qel.log") const {
        std::ostringstream text;
        text << std::ifstream(folder / name, std::ios::binary).rdbuf();
        return text.str();
    }
    const fs::path folder =
        fs::temp_directory_path() /
        ("tembrel trace " + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
};

TEST(Trace, FormsTheLine) {
    struct Row {
        const char* name;
        const char* source;
        const char* message;
        const char* detail;
        const char* line;
    };
    const Row rows[] = {
        {"without detail", "Engine.cpp", "started", "", "QEL_TRACE: Engine.cpp:12 -- started"},
        {"with detail", "Engine.cpp", "loaded", "Piano.prg", "QEL_TRACE: Engine.cpp:12 -- loaded -- Piano.prg"},
        {"folders dropped", "a/b/Engine.cpp", "x", "", "QEL_TRACE: Engine.cpp:12 -- x"},
        {"either separator", "a\\b/c\\Engine.cpp", "x", "", "QEL_TRACE: Engine.cpp:12 -- x"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Trace::format(row.source, 12, row.message, row.detail), row.line) << row.name;
    }
}

TEST_F(TraceFile, IsAppendedToByEachLineAndByTheNextRun) {
    for (int run = 1; run <= 2; ++run) {
        Trace trace(folder);
        trace.write("first");
        trace.write("second", "detail");
    }
    const std::string text = content();
    std::istringstream lines(text);
    std::string line;
    for (const char* const end : {" -- first", " -- second -- detail", " -- first", " -- second -- detail"}) {
        ASSERT_TRUE(std::getline(lines, line));
        EXPECT_TRUE(line.starts_with("QEL_TRACE: TraceTests.cpp:")) << line;
        EXPECT_TRUE(line.ends_with(end)) << line;
    }
    EXPECT_FALSE(std::getline(lines, line));
    EXPECT_EQ(text.back(), '\n');
    EXPECT_EQ(text.find('\r'), std::string::npos);
}

TEST_F(TraceFile, NeverGrowsBeyondItsBound) {
    Trace trace(folder);
    const std::string detail(100'000, 'x');
    for (int i = 0; i < 25; ++i) {
        trace.write("line", detail);
    }
    trace.write("last");
    EXPECT_LE(fs::file_size(folder / "qel.log"), Trace::MAX_FILE_SIZE);
    EXPECT_LE(fs::file_size(folder / "qel.old.log"), Trace::MAX_FILE_SIZE);
    EXPECT_GT(fs::file_size(folder / "qel.old.log"), Trace::MAX_FILE_SIZE - 2 * detail.size());
    EXPECT_TRUE(content().ends_with(" -- last\n"));
}

TEST_F(TraceFile, HasWholeLinesWhoeverWrites) {
    Trace trace(folder);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int j = 0; j < 50; ++j) {
                trace.write("message", "detail");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::istringstream lines(content());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        EXPECT_TRUE(line.starts_with("QEL_TRACE: ") && line.ends_with(" -- message -- detail")) << line;
    }
    EXPECT_EQ(count, 200);
}

TEST_F(TraceFile, IsNotThereWithoutAFolderAndPassedOverWhereItCannotBe) {
    Trace nowhere;
    nowhere.write("not in a file");
    EXPECT_TRUE(fs::is_empty(folder));
    fs::remove(folder);
    Trace lost(folder);
    lost.write("not without its folder");
    EXPECT_FALSE(fs::exists(folder));
    std::ofstream(folder) << "a file in the folder's place";
    Trace trace(folder);
    trace.write("nor here");
    EXPECT_TRUE(fs::is_regular_file(folder));
}

} // namespace
} // namespace Backend
