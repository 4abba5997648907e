// The real window on a display of its own: keys from the system, focus, the end.
#include "e2e/RunningProgram.h"
#include "platform/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

const char* const tembrel = TEMBREL_BIN_DIR "/tembrel";

bool canOpenWindows() {
    return TEMBREL_WITH_WINDOW && std::filesystem::exists("/usr/bin/Xvfb") &&
           std::filesystem::exists("/usr/bin/xdotool");
}

class WindowEndToEnd : public testing::Test {
protected:
    void SetUp() override {
        if (!canOpenWindows()) {
            GTEST_SKIP() << "needs Xvfb, xdotool and a build with the window";
        }
        for (const char* const part : {"server", "program", "second"}) {
            std::filesystem::create_directories(folder_.path() / part);
        }
        server_ = std::make_unique<RunningProgram>(
            "Xvfb", std::vector<std::string>{display, "-screen", "0", "1400x900x24", "-noreset"},
            folder_.path().string() + "/server");
        setenv("DISPLAY", display, 1);
        setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1);
        ASSERT_TRUE(eventually([this] { return tool("getmouselocation") == 0; })) << server_->error();
        program_ = std::make_unique<RunningProgram>(
            tembrel, std::vector<std::string>{"run", "--midi", "none", "--data", folder_.path().string() + "/data"},
            folder_.path().string() + "/program");
        ASSERT_TRUE(eventually([this] { return tool("search --onlyvisible --name Tembrel windowfocus") == 0; }))
            << program_->error();
    }
    void TearDown() override {
        if (program_ && program_->isRunning()) {
            program_->signal(15);
            EXPECT_EQ(program_->waitForEnd(), 0);
        }
        unsetenv("DISPLAY");
    }
    static int tool(const std::string& what) { return std::system(("xdotool " + what + " >/dev/null 2>&1").c_str()); }
    bool plays(const std::string& line) {
        return eventually([&] { return program_->output().find(line) != std::string::npos; });
    }

    static constexpr const char* display = ":93";
    TemporaryFolder folder_;
    std::unique_ptr<RunningProgram> server_;
    std::unique_ptr<RunningProgram> program_;
};

TEST_F(WindowEndToEnd, AKeyOfTheSystemPlaysAndEnds) {
    tool("keydown q");
    EXPECT_TRUE(plays(" 0 90 60 100\n")) << program_->error();
    tool("keyup q");
    EXPECT_TRUE(plays(" 0 80 60 100\n"));
}

TEST_F(WindowEndToEnd, AnotherWindowTakesTheFocusAndTheNoteEnds) {
    RunningProgram other(tembrel, {"run", "--midi", "none", "--data", folder_.path().string() + "/other"},
                         folder_.path().string() + "/second");
    tool("search --sync --onlyvisible --name Tembrel");
    tool("search --onlyvisible --name Tembrel windowfocus"); // the first one
    tool("keydown q");
    ASSERT_TRUE(
        eventually([&] { return (program_->output() + other.output()).find(" 0 90 60 100\n") != std::string::npos; }));
    const bool ours = program_->output().find(" 0 90 60 100\n") != std::string::npos;
    std::system("for w in $(xdotool search --onlyvisible --name Tembrel); do "
                "[ $w = $(xdotool getwindowfocus) ] || { xdotool windowfocus $w; break; }; done >/dev/null 2>&1");
    EXPECT_TRUE(eventually([&] {
        return (ours ? program_->output() : other.output()).find(" 0 80 60 100\n") != std::string::npos;
    })) << "let go without the key coming up";
    tool("keyup q");
    other.signal(15);
    EXPECT_EQ(other.waitForEnd(), 0);
}

TEST_F(WindowEndToEnd, QuitReleasesEverything) {
    tool("keydown q");
    ASSERT_TRUE(plays(" 0 90 60 100\n"));
    program_->signal(15);
    EXPECT_EQ(program_->waitForEnd(), 0);
    EXPECT_NE(program_->output().find(" 0 80 60 100\n"), std::string::npos);
    tool("keyup q");
}

} // namespace
