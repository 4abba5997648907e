// tembrel run without a MIDI system.
#include "e2e/HeldThread.h"
#include "e2e/RunningProgram.h"
#include "support/TemporaryFolder.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>

namespace {

const char* const tembrel = TEMBREL_BIN_DIR "/tembrel";

const char* const split = R"(<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
	<Program name="Split" tempo="240">
		<Layers merge="false">
			<Layer maxNote="B3" output="1" channel="3" transpose="-12"/>
			<Layer minNote="C4" output="0" channel="4"/>
			<Layer minNote="C4" output="0" channel="5" transpose="+7"/>
		</Layers>
	</Program>
</ProgramFile>
)";

struct Line {
    int tick;
    std::string message;
};

std::vector<Line> linesOf(const std::string& text) {
    std::vector<Line> lines;
    std::istringstream stream(text);
    for (Line line; stream >> line.tick && std::getline(stream >> std::ws, line.message);) {
        lines.push_back(line);
    }
    return lines;
}

class Run : public testing::Test {
protected:
    Run() { setenv("JACK_DEFAULT_SERVER", ("tembrel-none-" + std::to_string(getpid())).c_str(), 1); }

    std::unique_ptr<RunningProgram> start(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--data", path("data")});
        return std::make_unique<RunningProgram>(tembrel, std::move(arguments), folder.path());
    }
    [[nodiscard]] std::string path(const std::string& name) const { return (folder.path() / name).string(); }
    std::string file(const std::string& name, const std::string& content) const {
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }
    TemporaryFolder folder;
};

TEST_F(Run, PlaysLiveWhatRenderPlays) {
    const std::string script = "0 midi 0 0x90 40 90\n0 midi 0 0x90 60 100\n100 midi 0 0xB0 7 5\n200 midi 0 0x90 60 0\n"
                               "300 midi 0 0x80 40 9\n# a comment\n\n400 midi 0 0xC1 3\n";
    const std::string program = file("split.prg", split);
    const auto live = start({"run", "--headless", "--midi", "none", "--out", "A", "B", "--program", program});
    live->write(script);
    live->closeInput();
    EXPECT_EQ(live->waitForEnd(), 0) << live->error();
    EXPECT_EQ(live->error(), "MIDI system: none, playing to the monitor\n");

    const auto offline =
        start({"render", file("script", script), "--outputs", "2", "--events", "-", "--program", program});
    EXPECT_EQ(offline->waitForEnd(), 0) << offline->error();
    const auto played = linesOf(live->output());
    const auto rendered = linesOf(offline->output());
    ASSERT_EQ(played.size(), rendered.size()) << live->output() << "instead of\n" << offline->output();
    ASSERT_GT(rendered.size(), 8u);
    for (std::size_t i = 0; i < played.size(); ++i) {
        EXPECT_EQ(played[i].message, rendered[i].message);
        EXPECT_GE(played[i].tick, rendered[i].tick) << "later, on a busy machine, but never earlier";
    }
}

TEST_F(Run, OscillatorsPlayLiveAndLeaveTheirStopValuesBehind) {
    const auto program = start({"run", "--headless", "--midi", "none", "--program", file("gate.prg", R"(<ProgramFile>
<Program name="Gate"><Oscillators merge="false">
<Oscillator type="pulse" speed="96" midiMessage="Controller Change,11" stopValue="99"/>
</Oscillators></Program></ProgramFile>)")});
    program->write("0 function <ChangeOscPlaying type=\"0\" value=\"on\"/>\n");
    ASSERT_TRUE(eventually([&] { return linesOf(program->output()).size() > 20; })) << program->error();
    program->signal(SIGTERM);
    EXPECT_EQ(program->waitForEnd(), 0) << program->error();
    const auto lines = linesOf(program->output());
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        EXPECT_EQ(lines[i].message, i % 2 == 0 ? "0 B0 11 0" : "0 B0 11 127") << i;
        if (i > 0) {
            EXPECT_NEAR(lines[i].tick - lines[i - 1].tick, 48, 1) << i;
        }
    }
    EXPECT_EQ(lines.back().message, "0 B0 11 99");
}

TEST_F(Run, ExplainsWhatBecomesOfAMessage) {
    const std::string program =
        file("p.prg",
             R"(<ProgramFile><Program><MidiInput><MidiEvent midiEvent="Note On,60"><Translation condition="D2 gt 63">)"
             R"(<MidiNoteOn d1="D1 +12" d2="D2"/></Translation></MidiEvent></MidiInput></Program></ProgramFile>)");
    const auto run = start({"run", "--headless", "--midi", "none", "--explain", "--program", program});
    run->write("0 midi 0 0x90 60 100\n10 midi 0 0x80 60 9\n");
    run->closeInput();
    EXPECT_EQ(run->waitForEnd(), 0) << run->error();
    for (const char* step : {": Note On, channel 1, 60 (C4), 100\n  configured for any input and channel: Note On,60\n"
                             "  D2 gt 63 with 100: holds\n"
                             "  MidiNoteOn d1=\"D1 +12\" d2=\"D2\": Note On, default channel, 72 (C5), 100\n",
                             " 0 80 72 9\n"}) {
        EXPECT_NE(run->output().find(step), std::string::npos) << step << "in\n" << run->output();
    }
}

TEST_F(Run, PlaysLinesAsTheyArriveAndReleasesWhatSoundsAtTheEnd) {
    for (const int way : {SIGTERM, SIGINT, 0}) {
        SCOPED_TRACE(way);
        const auto program = start({"--headless", "--midi", "none"}); // the verb may be left out
        program->write("0 midi 0 0x95 60 100\n");
        ASSERT_TRUE(eventually([&] { return program->output().find(" 0 90 60 100\n") != std::string::npos; }))
            << program->output() << program->error();
        program->write("0 midi 0 0x95 64 100\n"); // its tick has passed: at once
        ASSERT_TRUE(eventually([&] { return linesOf(program->output()).size() == 2; }));
        if (way != 0) {
            program->signal(way);
        } else {
            program->write("1 end\n");
        }
        EXPECT_EQ(program->waitForEnd(), 0) << program->error();
        std::vector<std::string> released;
        for (const Line& line : linesOf(program->output())) {
            released.push_back(line.message.substr(0, 7));
        }
        EXPECT_THAT(released, testing::UnorderedElementsAre("0 90 60", "0 90 64", "0 80 60", "0 80 64"));
    }
}

TEST_F(Run, AFaultyLineEndsItWithLineAndReason) {
    const auto program = start({"run", "--headless", "--midi", "none"});
    program->write("0 midi 0 0x90 60 100\n");
    ASSERT_TRUE(eventually([&] { return linesOf(program->output()).size() == 1; }));
    program->write("10 midi 9 0x90 60 100\n");
    EXPECT_EQ(program->waitForEnd(), 1);
    EXPECT_NE(program->error().find("\nstandard input:2: "), std::string::npos) << program->error();
    EXPECT_EQ(linesOf(program->output()).back().message.substr(0, 7), "0 80 60");
}

TEST_F(Run, GarbageOnStandardInputIsAFaultAndNoMore) {
    const std::string garbage[] = {std::string("\0\xFF\xFE\n", 4), std::string(300'000, 'x'),
                                   "99999999999999999999 midi 0 0x90 1 1\n", "0 midi 0 0x90 60 200\n"};
    for (const std::string& text : garbage) {
        const auto program = start({"run", "--headless", "--midi", "none"});
        program->write(text.substr(0, 60'000)); // what a pipe takes at once
        program->closeInput();
        EXPECT_EQ(program->waitForEnd(), 1);
        EXPECT_NE(program->error().find("standard input:1: "), std::string::npos) << program->error();
    }
}

TEST_F(Run, WritesEventsToAFileToo) {
    const auto program = start({"run", "--headless", "--midi", "none", "--events", path("events")});
    program->write("0 midi 0 0x90 60 100\n5 midi 0 0x80 60 1\n");
    program->closeInput();
    EXPECT_EQ(program->waitForEnd(), 0);
    std::ifstream events(path("events"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(events), {}), program->output());
    EXPECT_EQ(linesOf(program->output()).size(), 2u);
}

struct MissingCase {
    const char* name;
    std::vector<std::string> arguments;
    int code;
    const char* reason;
};

TEST_F(Run, SaysWhatIsMissingInOneLine) {
    const MissingCase cases[] = {
        {"JACK server", {"run", "--midi", "jack"}, 1, "there is no JACK server"},
        {"other system's MIDI", {"run", "--midi", "winmm"}, 1, "there is no WinMM"},
        {"program", {"run", "--midi", "none", "--program", "/nowhere.prg"}, 1, "nowhere.prg"},
        {"place for events", {"run", "--midi", "none", "--events", "/nowhere/events"}, 1, "/nowhere/events"},
        {"kind of system", {"run", "--midi", "oss"}, 2, "oss"},
        {"tempo", {"run", "--midi", "none", "--tempo", "9"}, 2, "tempo"},
        {"slot beyond the bank",
         {"run", "--midi", "none", "--bank", TEMBREL_SOURCE_DIR "/data/factory/Banks/Default Bank.bnk", "--slot", "99"},
         1,
         "there is no slot 99"},
        {"bank of a slot", {"run", "--midi", "none", "--slot", "1"}, 2, "--bank"},
    };
    for (const MissingCase& one : cases) {
        SCOPED_TRACE(one.name);
        const auto program = start(one.arguments); // its standard input stays open
        EXPECT_EQ(program->waitForEnd(), one.code);
        const std::string error = program->error();
        EXPECT_NE(error.find(one.reason), std::string::npos) << error;
        EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 1) << error;
        EXPECT_EQ(program->output(), "");
    }
}

// A file system that does not answer keeps the thread that asked it, and no other.
TEST_F(Run, WhatSoundsGoesOnWhileAFileIsWaitedFor) {
    const auto layer = [](const char* transpose) {
        return std::string("<Layers><Layer transpose=\"") + transpose +
               "\"><UpArpeggio beat=\"30\" length=\"15\"/></Layer></Layers>";
    };
    const std::string program =
        file("arpeggio.prg", "<ProgramFile><Program>" + layer("+0") + "</Program></ProgramFile>");
    std::filesystem::create_directories(path("data/Layer Presets"));
    file("data/Layer Presets/Slow.pst", layer("+12"));
    const auto run = start({"run", "--headless", "--midi", "none", "--program", program, "--events", path("events")});
    const auto notes = [&](const std::string& start) {
        std::ifstream stream(path("events"));
        std::vector<Line> lines = linesOf(std::string(std::istreambuf_iterator<char>(stream), {}));
        std::erase_if(lines, [&](const Line& line) { return !line.message.starts_with(start); });
        return lines;
    };
    run->write("0 midi 0 0x90 60 100\n");
    ASSERT_TRUE(eventually([&] { return notes("0 90 60").size() > 2; })) << run->error();
    {
        HeldThread backend(run->processId(), "tembrel-backend", "Slow.pst");
        if (!backend.isFollowed()) {
            GTEST_SKIP() << "threads may not be followed here";
        }
        run->write("0 function <LoadLayerPreset preset=\"Slow\"/>\n");
        ASSERT_TRUE(backend.isHeld());
        const std::size_t before = notes("0 90 60").size();
        ASSERT_TRUE(eventually([&] { return notes("0 90 60").size() > before + 40; }));
        const std::vector<Line> played = notes("0 90 60");
        for (std::size_t i = 1; i < played.size(); ++i) {
            EXPECT_EQ(played[i].tick - played[i - 1].tick, 30) << i;
        }
        EXPECT_TRUE(notes("0 90 72").empty());
    }
    EXPECT_TRUE(eventually([&] { return notes("0 90 72").size() > 2; })) << "then the file has been read";
    run->signal(SIGTERM);
    EXPECT_EQ(run->waitForEnd(), 0);
    EXPECT_EQ(notes("0 90").size(), notes("0 80").size());
}

} // namespace
