// tembrel run --headless played in a terminal, heard through JACK.
#include "e2e/JackPeer.h"
#include "e2e/JackServer.h"
#include "e2e/RunningProgram.h"
#include "e2e/TerminalProgram.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace {

const char* const tembrel = TEMBREL_BIN_DIR "/tembrel";

const char* const twoZones = R"(<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
	<Program name="Two zones" tempo="90">
		<Zones merge="false">
			<Zone id="0"/>
			<Zone id="1"/>
		</Zones>
	</Program>
</ProgramFile>
)";

class Terminal : public testing::Test {
protected:
    void SetUp() override {
        if (!JackServer::isInstalled()) {
            GTEST_SKIP() << "there is no jackd";
        }
        ASSERT_TRUE(server.isRunning()) << server.error();
        peer = std::make_unique<JackPeer>("peer");
        ASSERT_TRUE(peer->isOpen());
    }
    void start(bool kitty) {
        const std::string file = (folder.path() / "zones.prg").string();
        std::ofstream(file) << twoZones;
        program = std::make_unique<TerminalProgram>(tembrel,
                                                    std::vector<std::string>{"run", "--headless", "--midi", "jack",
                                                                             "--program", file, "--data",
                                                                             (folder.path() / "data").string()},
                                                    kitty);
        ASSERT_TRUE(eventually([this] { return peer->sees("Tembrel:in") && peer->sees("Tembrel:out"); }))
            << program->text();
        ASSERT_TRUE(eventually([this] { return peer->connect("Tembrel:in", "Tembrel:out"); }));
        ASSERT_TRUE(eventually([this] { return program->hasWritten(kittyQuestion); })) << program->text();
        ASSERT_TRUE(!kitty || eventually([this] { return program->hasWritten(kittyRequest); }));
        // The whole road is open once a message from elsewhere comes back.
        ASSERT_TRUE(eventually([this] {
            peer->send({{0xB0, 99, 1}}, {0});
            return !peer->received().empty();
        }));
    }
    // What was heard since the last call, up to `last`; without the messages that opened the road.
    [[nodiscard]] std::vector<std::string> heardUpTo(const std::string& last) {
        std::vector<std::string> heard;
        static_cast<void>(eventually([&] {
            heard.clear();
            const auto events = peer->received();
            for (std::size_t i = heard_; i < events.size(); ++i) {
                if (events[i].bytes != "B0 99 1") {
                    heard.push_back(events[i].bytes);
                }
                if (events[i].bytes == last) {
                    heard_ = i + 1;
                    return true;
                }
            }
            return false;
        }));
        return heard;
    }
    [[nodiscard]] bool showsStatus(const std::string& part) const {
        return eventually([&] { return program->statusLine().find(part) != std::string::npos; });
    }

    using Heard = std::vector<std::string>;
    const std::string kittyQuestion = "\x1b[?u";
    const std::string kittyRequest = "\x1b[>15u";
    TemporaryFolder folder;
    JackServer server{folder.path(), 256};
    std::unique_ptr<JackPeer> peer;
    std::unique_ptr<TerminalProgram> program;
    std::size_t heard_ = 0;
};

TEST_F(Terminal, PlaysWithoutBeingToldOfReleases) {
    start(false);
    EXPECT_TRUE(showsStatus("Two zones | zone 0 0 | no control | 90 BPM | 0 notes held")) << program->statusLine();
    program->type("q");
    EXPECT_EQ(heardUpTo("90 60 100"), Heard{"90 60 100"});
    EXPECT_TRUE(showsStatus("| 1 note held")) << program->statusLine();
    EXPECT_EQ(heardUpTo("80 60 100"), Heard{"80 60 100"}) << "it ends by itself";
    EXPECT_TRUE(showsStatus("| 0 notes held"));
    program->type("2");
    EXPECT_EQ(heardUpTo("80 61 100"), (Heard{"90 61 100", "80 61 100"}));
    program->type("qz"); // a chord over both rows
    EXPECT_THAT(heardUpTo("80 48 100"),
                testing::UnorderedElementsAre("90 60 100", "90 48 100", "80 60 100", "80 48 100"));

    program->type("\x1bOQ"); // F2: the selected zone, which is the upper row's, an octave up
    EXPECT_TRUE(showsStatus("| zone 0 +12 |")) << program->statusLine();
    program->type("qz");
    EXPECT_THAT(heardUpTo("80 48 100"),
                testing::UnorderedElementsAre("90 72 100", "90 48 100", "80 72 100", "80 48 100"));
    program->type("\x1bOP"); // F1
    EXPECT_TRUE(showsStatus("| zone 0 0 |")) << program->statusLine();

    program->type(" ");
    EXPECT_EQ(heardUpTo("B0 1 0"), (Heard{"B0 1 127", "B0 1 0"}));

    program->type("\x1b[C"); // nothing was selected: the first control
    EXPECT_TRUE(showsStatus("| PB = 8192 |")) << program->statusLine();
    program->type("\x1b[C");
    EXPECT_TRUE(showsStatus("| MW = 0 |")) << program->statusLine();
    program->type("\x1b[5~"); // Page Up
    EXPECT_EQ(heardUpTo("B0 1 1"), Heard{"B0 1 1"});
    EXPECT_TRUE(showsStatus("| MW = 1 |")) << program->statusLine();

    program->type("wx");
    EXPECT_THAT(heardUpTo("90 50 100"), testing::UnorderedElementsAre("90 62 100", "90 50 100"));
    program->type("\x03"); // Ctrl-C
    EXPECT_EQ(program->waitForEnd(), 0) << program->text();
    EXPECT_TRUE(eventually([&] { return peer->received().size() >= heard_ + 2; }));
    Heard ends;
    for (std::size_t i = heard_; i < peer->received().size(); ++i) {
        ends.push_back(peer->received()[i].bytes);
    }
    EXPECT_THAT(ends, testing::UnorderedElementsAre("80 62 100", "80 50 100"));
    EXPECT_TRUE(program->isAsBefore());
    EXPECT_TRUE(program->hasWritten("\x1b[?2004l")) << "pastes are no longer marked";
    EXPECT_FALSE(program->hasWritten("\x1b[<u")) << "nothing is taken back that was not asked for";
}

TEST_F(Terminal, HoldsNotesAsLongAsTheKittyProtocolSays) {
    start(true);
    program->type("\x1b[113;1:1u"); // Q goes down
    EXPECT_EQ(heardUpTo("90 60 100"), Heard{"90 60 100"});
    program->type("\x1b[122;1:1u\x1b[122;1:3u"); // Z, down and up
    EXPECT_EQ(heardUpTo("80 48 100"), (Heard{"90 48 100", "80 48 100"}));
    std::this_thread::sleep_for(std::chrono::milliseconds(900)); // longer than any guess would hold it
    program->type("\x1b[113;1:2u\x1b[1;1:1Q\x1b[1;1:3Q");        // Q repeats; F2 is tapped
    program->type("\x1b[119;1:1u");                              // W goes down
    EXPECT_EQ(heardUpTo("90 74 100"), Heard{"90 74 100"}) << "Q has neither ended nor sounded again";
    program->type("\x1b[113;1:3u");
    EXPECT_EQ(heardUpTo("80 60 100"), Heard{"80 60 100"}) << "the note that was begun";
    program->type("\x1b[32;1:1u\x1b[32;1:3u"); // Space
    EXPECT_EQ(heardUpTo("B0 1 0"), (Heard{"B0 1 127", "B0 1 0"}));
    program->type("\x1b[1;1:1C\x1b[1;1:3C\x1b[5;1:1~\x1b[5;1:2~\x1b[5;1:3~"); // Right; Page Up, repeated
    EXPECT_TRUE(showsStatus("| PB = 8194 |")) << program->statusLine();
    EXPECT_EQ(heardUpTo("E0 2 64"), (Heard{"E0 1 64", "E0 2 64"}));

    program->type("\x1b[99;5:1u"); // Ctrl-C
    EXPECT_EQ(program->waitForEnd(), 0) << program->text();
    EXPECT_EQ(heardUpTo("80 74 100"), Heard{"80 74 100"});
    EXPECT_TRUE(program->isAsBefore());
    EXPECT_TRUE(program->hasWritten("\x1b[<u")) << "the keyboard's way is given back";
}

TEST_F(Terminal, ThatIsClosedEndsTheNotes) {
    start(false);
    program->type("q");
    EXPECT_EQ(heardUpTo("90 60 100"), Heard{"90 60 100"});
    program->closeTerminal();
    EXPECT_EQ(program->waitForEnd(), 0);
    EXPECT_EQ(heardUpTo("80 60 100"), Heard{"80 60 100"});
}

} // namespace
