// The retrospective record of the running program, and "tembrel take".
#include "e2e/RunningProgram.h"
#include "generators/recording/BufferReader.h"
#include "generators/recording/RecordRig.h"
#include "platform/SettingsStore.h"
#include "support/FileContent.h"
#include "support/RandomCases.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <ios>
#include <memory>
#include <sstream>
#include <thread>

namespace {

namespace fs = std::filesystem;

const char* const tembrel = TEMBREL_BIN_DIR "/tembrel";

struct Read {
    std::uint64_t ticks; // from the start
    std::string message; // "90 3C 64", or the name of a meta event
};

// A MIDI file as Mido, a library for Python that is none of ours, reads it.
std::vector<Read> readByMido(const fs::path& file, const std::string& folder) {
    const std::string script = "import sys, mido\n"
                               "file = mido.MidiFile(sys.argv[1])\n"
                               "print(file.type, file.ticks_per_beat, len(file.tracks))\n"
                               "time = 0\n"
                               "for event in file.tracks[0]:\n"
                               "    time += event.time\n"
                               "    print(time, event.type if event.is_meta else event.hex())\n";
    RunningProgram python("/usr/bin/python3", {"-c", script, file.string()}, folder);
    EXPECT_EQ(python.waitForEnd(), 0) << python.error();
    std::istringstream lines(python.output());
    std::string head;
    std::getline(lines, head);
    EXPECT_EQ(head, "0 96 1");
    std::vector<Read> events;
    for (Read event; lines >> event.ticks && std::getline(lines >> std::ws, event.message);) {
        events.push_back(event);
    }
    return events;
}

bool hasMido(const std::string& folder) {
    RunningProgram python("/usr/bin/python3", {"-c", "import mido"}, folder);
    return python.waitForEnd() == 0;
}

TEST(Record, AnotherReaderFindsWhatWasPlayedWhenItWasPlayed) {
    RecordRig rig;
    if (!hasMido(rig.folder.path())) {
        GTEST_SKIP() << "python3-mido is not installed";
    }
    RandomCases random;
    std::vector<std::uint32_t> gaps;
    std::vector<std::string> played;
    for (int i = 0; i < 2000; ++i) {
        constexpr std::uint32_t statuses[] = {0x80, 0x90, 0xA0, 0xB0, 0xC0, 0xD0, 0xE0};
        const std::uint32_t status = statuses[random.number(0, 6)] | random.number(0U, 15U);
        const bool isShort = (status & 0xE0) == 0xC0;
        const std::uint32_t d1 = random.number(0U, 127U);
        const std::uint32_t d2 = isShort ? 0 : random.number(0U, 127U);
        gaps.push_back(random.number(0, 9) == 0 ? random.number(0U, 7000U) : random.number(0U, 50U));
        rig.play(gaps.back(), status, d1, d2);
        char text[16];
        std::snprintf(text, sizeof text, isShort ? "%02X %02X" : "%02X %02X %02X", status, d1, d2);
        played.emplace_back(text);
    }
    ASSERT_TRUE(rig.writer->save(rig.target(), std::nullopt));
    const auto read = readByMido(rig.target(), rig.folder.path());
    ASSERT_EQ(read.size(), played.size() + 2);
    for (std::size_t i = 0; i < played.size(); ++i) {
        EXPECT_EQ(read[i].message, played[i]);
        const std::uint64_t gap = (read[i].ticks - (i > 0 ? read[i - 1].ticks : 0)) * 5;
        EXPECT_LE(gap, gaps[i]);
        EXPECT_LT(gaps[i], gap + 5) << "a tick is 5 ms";
    }
    EXPECT_EQ(read[played.size()].message, "B0 78 00");
    EXPECT_EQ(read[played.size() + 1].message, "end_of_track");
}

class Take : public testing::Test {
protected:
    Take() {
        setenv("JACK_DEFAULT_SERVER", ("tembrel-none-" + std::to_string(getpid())).c_str(), 1);
        setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    }
    ~Take() override { unsetenv("XDG_RUNTIME_DIR"); }

    std::unique_ptr<RunningProgram> start(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--data", (folder.path() / "data").string()});
        return std::make_unique<RunningProgram>(tembrel, std::move(arguments), folder.path());
    }
    std::unique_ptr<RunningProgram> play() { return start({"run", "--headless", "--midi", "none"}); }
    [[nodiscard]] static bool hasPlayed(const RunningProgram& program, const std::string& message) {
        return eventually([&] { return program.output().find(message + '\n') != std::string::npos; });
    }
    // What `take` with these options saves: "90 3C 64; ..." without the end; or what it says.
    std::string taken(std::vector<std::string> options = {}) {
        fs::remove(target);
        options.insert(options.begin(), {"take", target.string()});
        const auto take = start(options);
        if (const int code = take->waitForEnd(); code != 0) {
            EXPECT_FALSE(fs::exists(target));
            return std::to_string(code) + ": " + take->error();
        }
        std::string text;
        for (const std::string& message : messages()) {
            text += (text.empty() ? "" : "; ") + message;
        }
        return text;
    }
    [[nodiscard]] std::vector<std::string> messages() const {
        const std::string content = TestSupport::contentOf(target);
        Backend::Recording::BufferReader events(std::string_view(content).substr(22));
        std::vector<std::string> found;
        for (Backend::Recording::BufferEvent event; events.next(event);) {
            found.emplace_back();
            for (const char byte : event.message) {
                char text[4];
                std::snprintf(text, sizeof text, found.back().empty() ? "%02X" : " %02X",
                              static_cast<unsigned char>(byte));
                found.back() += text;
            }
        }
        found.pop_back(); // the All Sound Off
        return found;
    }

    TemporaryFolder folder;
    const fs::path target = folder.path() / "out.mid";
    const fs::path buffers = folder.path() / "data" / "Retrospective Record";
    const std::string nothing = "1: nothing has been played: no file is written\n";
};

TEST_F(Take, SavesFromTheRunningProgramAndThenFromItsBuffers) {
    EXPECT_EQ(taken(), nothing);
    const auto program = play();
    program->write("0 midi 0 0x90 60 100\n");
    ASSERT_TRUE(hasPlayed(*program, " 0 90 60 100")) << program->error();
    EXPECT_EQ(taken({"--last", "1"}), "90 3C 64");
    EXPECT_EQ(taken(), "90 3C 64");
    EXPECT_EQ(taken(), nothing) << "the record has begun anew";
    program->write("1 midi 0 0x90 62 100\n");
    ASSERT_TRUE(hasPlayed(*program, " 0 90 62 100"));
    const auto list = start({"take", "--list"});
    EXPECT_EQ(list->waitForEnd(), 0);
    EXPECT_NE(list->output().find("\t1 note\n"), std::string::npos) << list->output();
    program->signal(SIGTERM);
    EXPECT_EQ(program->waitForEnd(), 0);
    EXPECT_EQ(taken(), "90 3E 64; 80 3C 64; 80 3E 64");
    EXPECT_EQ(taken(), nothing);
    EXPECT_EQ(start({"take"})->waitForEnd(), 2);
    EXPECT_EQ(start({"take", "x.mid", "--list"})->waitForEnd(), 2);
}

TEST_F(Take, SignalsEndARunWithTheBuffersClosed) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(number);
        const auto program = play();
        program->write("0 midi 0 0x90 60 100\n");
        ASSERT_TRUE(hasPlayed(*program, " 0 90 60 100"));
        program->signal(number);
        EXPECT_EQ(program->waitForEnd(), 0) << program->error();
        EXPECT_EQ(taken(), "90 3C 64; 80 3C 64");
    }
}

TEST_F(Take, RenderingsAreNotRecorded) {
    std::ofstream(folder.path() / "script") << "0 midi 0 0x90 60 100\n";
    EXPECT_EQ(start({"render", (folder.path() / "script").string()})->waitForEnd(), 0);
    EXPECT_EQ(taken(), nothing);
}

TEST_F(Take, ProgramsBesideEachOtherHaveRecordsOfTheirOwn) {
    const auto first = play();
    first->write("0 midi 0 0x90 60 1\n");
    ASSERT_TRUE(hasPlayed(*first, " 0 90 60 1"));
    const auto second = play();
    second->write("0 midi 0 0x90 61 2\n");
    ASSERT_TRUE(hasPlayed(*second, " 0 90 61 2"));
    EXPECT_EQ(taken(), "90 3C 01");
    first->signal(SIGKILL);
    static_cast<void>(first->waitForEnd());
    EXPECT_EQ(taken(), "90 3D 02") << "of the one that still runs";
    second->write("1 midi 0 0x90 62 2\n");
    ASSERT_TRUE(hasPlayed(*second, " 0 90 62 2"));
    second->signal(SIGTERM);
    EXPECT_EQ(second->waitForEnd(), 0);
    EXPECT_EQ(taken(), "90 3E 02; 80 3D 64; 80 3E 64") << "of the one that ended last";
}

TEST_F(Take, APausedRecordIsSaidOnceAndGoesOn) {
    fs::create_directories(buffers);
    fs::create_symlink("/dev/full", buffers / "_current.tmp");
    const auto program = play();
    program->write("0 midi 0 0x90 60 1\n");
    ASSERT_TRUE(eventually([&] { return program->error().find("No space left") != std::string::npos; }));
    fs::remove(buffers / "_current.tmp");
    int note = 0;
    ASSERT_TRUE(eventually([&] {
        program->write("0 midi 0 0x90 " + std::to_string(note++ % 100) + " 1\n");
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return program->error().find("the record goes on") != std::string::npos;
    }));
    const std::string error = program->error();
    EXPECT_EQ(error.find("pauses"), error.rfind("pauses")) << error;
    EXPECT_NE(taken(), nothing);
    program->signal(SIGTERM);
    EXPECT_EQ(program->waitForEnd(), 0);
}

TEST_F(Take, AProgramThatCannotBeAskedKeepsItsRecord) {
    std::ofstream(folder.path() / "tembrel") << "in the way of the folder for sockets";
    const auto program = play();
    program->write("0 midi 0 0x90 60 1\n");
    ASSERT_TRUE(hasPlayed(*program, " 0 90 60 1"));
    EXPECT_NE(program->error().find("takes can be saved when the program has ended only: "), std::string::npos);
    EXPECT_EQ(taken(), "1: the program that runs cannot be asked; end it to save what was played\n");
    program->signal(SIGTERM);
    EXPECT_EQ(program->waitForEnd(), 0);
    EXPECT_EQ(taken(), "90 3C 01; 80 3C 64");
}

// Of lines "TICK OUTPUT B0 D1 D2" the numbers that D1 and D2 are made from; a line that has no end yet is none.
std::vector<int> numbersIn(const std::string& text, std::ios_base& (*base)(std::ios_base&)) {
    std::istringstream lines(text.substr(0, text.rfind('\n') + 1));
    lines >> base;
    std::vector<int> numbers;
    std::string tick;
    std::string output;
    std::string status;
    for (int d1 = 0, d2 = 0; lines >> tick >> output >> status >> d1 >> d2;) {
        numbers.push_back(d1 * 128 + d2);
    }
    return numbers;
}

// A message each tick; 960 ticks are a second. As often as TEMBREL_KILLS says.
TEST_F(Take, AKilledProgramLosesAtMostItsLastSecond) {
    {
        const auto store = Platform::fileSettingsStore(folder.path() / "data");
        const auto key =
            store->openOrCreate(Platform::SettingsRoot::currentUser, "Software\\Pellinor Software\\Tembrel 3\\3.2");
        ASSERT_NE(key, nullptr);
        ASSERT_EQ(key->write("MaxMidiBufferFileSize", Platform::SettingsValue::ofNumber(400)), 0); // 100 messages
        ASSERT_EQ(key->write("RetroRecordBufferSize", Platform::SettingsValue::ofNumber(100)), 0);
    }
    RandomCases random;
    const char* const kills = std::getenv("TEMBREL_KILLS");
    int worst = 0;
    for (int kill = kills != nullptr ? std::atoi(kills) : 8; kill > 0; --kill) {
        std::string script;
        for (int i = 0; i < 1800; ++i) {
            script +=
                std::to_string(i) + " midi 0 0xB0 " + std::to_string(i >> 7) + ' ' + std::to_string(i & 127) + '\n';
        }
        const auto program = play();
        program->write(script);
        ASSERT_TRUE(eventually([&] { return !program->output().empty(); })) << program->error();
        std::this_thread::sleep_for(std::chrono::microseconds(random.number(0, 1'500'000)));
        program->signal(SIGKILL);
        static_cast<void>(program->waitForEnd());
        const std::vector<int> played = numbersIn(program->output(), std::dec);
        static_cast<void>(taken());
        std::string text;
        for (const std::string& message : fs::exists(target) ? messages() : std::vector<std::string>()) {
            text += "- - " + message + '\n';
        }
        const std::vector<int> kept = numbersIn(text, std::hex);
        for (std::size_t i = 0; i < played.size(); ++i) {
            ASSERT_EQ(played[i], static_cast<int>(i)) << "of " << played.size() << " played";
        }
        for (std::size_t i = 0; i < kept.size(); ++i) {
            ASSERT_EQ(kept[i], static_cast<int>(i))
                << "of " << kept.size() << " kept and " << played.size() << " printed; " << program->error();
        }
        const int lost = static_cast<int>(played.size()) - static_cast<int>(kept.size());
        worst = std::max(worst, lost);
        EXPECT_LE(lost, 960);
    }
    std::printf("at most %d of the printed messages were lost\n", worst);
}

} // namespace
