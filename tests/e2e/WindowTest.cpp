// The real window on a display of its own: keys from the system, focus, the end.
#include "e2e/JackPeer.h"
#include "e2e/JackServer.h"
#include "e2e/RunningProgram.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

const char* const tembrel = TEMBREL_BIN_DIR "/tembrel";
const std::string noteOn = " 0 90 60 100\n";
const std::string noteOff = " 0 80 60 100\n";

bool canOpenWindows() {
    return TEMBREL_WITH_WINDOW && std::filesystem::exists("/usr/bin/Xvfb") &&
           std::filesystem::exists("/usr/bin/xdotool");
}

int countOf(const std::string& part, const std::string& text) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

// Windows are told apart by the names of their programs.
class WindowEndToEnd : public testing::Test {
protected:
    void SetUp() override {
        if (!canOpenWindows()) {
            GTEST_SKIP() << "needs Xvfb, xdotool and a build with the window";
        }
        server_ = std::make_unique<RunningProgram>(
            "Xvfb", std::vector<std::string>{"-displayfd", "1", "-screen", "0", "1400x900x24", "-noreset"},
            folder("server"));
        ASSERT_TRUE(eventually([this] { return server_->output().ends_with("\n"); })) << server_->error();
        const std::string number = server_->output();
        setenv("DISPLAY", (":" + number.substr(0, number.size() - 1)).c_str(), 1);
        setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1);
    }
    void TearDown() override {
        for (const std::unique_ptr<RunningProgram>* const each : {&program_, &other_}) {
            if (*each && (*each)->isRunning()) {
                (*each)->signal(15);
                EXPECT_EQ((*each)->waitForEnd(), 0);
            }
        }
        unsetenv("DISPLAY");
    }
    // Its window has the keyboard.
    std::unique_ptr<RunningProgram> start(const std::string& name, const std::string& midi = "none") {
        const std::string file = folder(name) + "/it.prg";
        std::ofstream(file) << R"(<?xml version="1.0" encoding="utf-8"?>
<ProgramFile><Program name=")"
                            << name << R"("><ComputerInput merge="true"><Key id="F5"><Function>
<Down><ChangeGlobalKeyboard type="on"/></Down></Function></Key></ComputerInput></Program></ProgramFile>)";
        auto started = std::make_unique<RunningProgram>(
            tembrel,
            std::vector<std::string>{"run", "--midi", midi, "--data", folder(name) + "/data", "--program", file},
            folder(name));
        EXPECT_TRUE(eventually([&] { return focus(name); })) << started->error();
        return started;
    }
    void startOne() { program_ = start("Mine"); }
    static int tool(const std::string& what) { return std::system(("xdotool " + what + " >/dev/null 2>&1").c_str()); }
    static bool focus(const std::string& name) {
        return tool("search --onlyvisible --name '^" + name + ".*Tembrel' windowfocus --sync") == 0;
    }
    // Menus and dialogs among them.
    static int visibleWindows() {
        int count = -1;
        if (FILE* const found = popen("xdotool search --onlyvisible --class . 2>/dev/null | wc -l", "r")) {
            static_cast<void>(std::fscanf(found, "%d", &count));
            pclose(found);
        }
        return count;
    }
    std::string folder(const std::string& name) {
        std::filesystem::create_directories(folder_.path() / name);
        return (folder_.path() / name).string();
    }
    bool plays(const std::string& line, int times = 1) {
        return eventually([&] { return countOf(line, program_->output()) >= times; });
    }

    TemporaryFolder folder_;
    std::unique_ptr<RunningProgram> server_;
    std::unique_ptr<JackServer> jack_; // outlives the programs: one that loses a client at its end keeps its place
    std::unique_ptr<RunningProgram> program_;
    std::unique_ptr<RunningProgram> other_;
};

TEST_F(WindowEndToEnd, AKeyOfTheSystemPlaysAndEnds) {
    startOne();
    tool("keydown q");
    EXPECT_TRUE(plays(noteOn)) << program_->error();
    tool("keyup q");
    EXPECT_TRUE(plays(noteOff));
}

TEST_F(WindowEndToEnd, WhateverTakesTheKeyboardEndsTheNote) {
    startOne();
    other_ = start("Other");
    const int windows = visibleWindows();
    const auto open = [windows](const std::string& keys) {
        tool("key " + keys);
        EXPECT_TRUE(eventually([windows] { return visibleWindows() > windows; })) << keys;
    };
    const std::pair<const char*, std::function<void()>> losses[]{
        {"another window", [] { focus("Other"); }},
        {"a menu", [open] { open("ctrl+p"); }},
        {"a dialog", [open] { open("ctrl+comma"); }},
        {"unmapped", [] { tool("search --onlyvisible --name '^Mine.*Tembrel' windowunmap"); }}};
    int times = 0;
    for (const auto& [name, lose] : losses) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(focus("Mine"));
        tool("keydown q");
        ASSERT_TRUE(plays(noteOn, ++times)) << program_->error();
        lose();
        EXPECT_TRUE(plays(noteOff, times)) << "let go without the key coming up";
        tool("keyup q");
        EXPECT_TRUE(eventually([windows] { // what has opened closes as soon as it has the keyboard
            return visibleWindows() <= windows || (tool("key Escape") == 0 && visibleWindows() <= windows);
        }));
    }
    EXPECT_EQ(countOf(noteOff, program_->output()), times) << "each note ends once";
}

TEST_F(WindowEndToEnd, GlobalKeysAreHeardThroughJackWhileAnotherWindowHasTheKeyboard) {
    if (!JackServer::isInstalled()) {
        GTEST_SKIP() << "there is no jackd";
    }
    jack_ = std::make_unique<JackServer>(folder("jack"), 256);
    ASSERT_TRUE(jack_->isRunning()) << jack_->error();
    JackPeer peer("peer");
    program_ = start("Mine", "jack");
    ASSERT_TRUE(eventually([&] { return peer.connect("Tembrel:in", "Tembrel:out"); })) << program_->error();
    const auto hears = [&](const std::string& bytes) {
        return std::ranges::any_of(peer.received(), [&](const JackPeer::Event& each) { return each.bytes == bytes; });
    };
    tool("key F5");
    other_ = start("Other");
    tool("key w"); // at once
    EXPECT_TRUE(eventually([&] { return hears("80 62 100"); })) << program_->error();
    EXPECT_TRUE(eventually([&] { return !other_->output().empty(); })) << "nothing is taken away from the other window";
    tool("keydown q");
    EXPECT_TRUE(eventually([&] { return hears("90 60 100"); }));
    EXPECT_FALSE(hears("80 60 100"));
    tool("keyup q");
    EXPECT_TRUE(eventually([&] { return hears("80 60 100"); }));
}

TEST_F(WindowEndToEnd, QuitReleasesEverything) {
    startOne();
    tool("keydown q");
    ASSERT_TRUE(plays(noteOn));
    program_->signal(15);
    EXPECT_EQ(program_->waitForEnd(), 0);
    EXPECT_NE(program_->output().find(noteOff), std::string::npos);
    tool("keyup q");
}

} // namespace
