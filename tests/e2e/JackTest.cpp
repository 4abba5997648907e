// tembrel run under a real JACK server, heard by another client.
#include "e2e/JackRig.h"

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <map>

namespace {

const char* const layered = R"(<?xml version="1.0" encoding="utf-8"?>
<ProgramFile>
	<Program name="Layered">
		<Layers merge="false">
			<Layer output="0" channel="0"/>
			<Layer output="0" channel="1" transpose="+12"/>
		</Layers>
	</Program>
</ProgramFile>
)";

using Message = std::vector<std::uint8_t>;

class Jack : public JackRig {};

TEST_F(Jack, AClientThatSendsIntoItReceivesTheLayeredResult) {
    const auto program = startHeard({"--program", file("layered.prg", layered)});
    peer->send({{0x93, 60, 100}, {0xB3, 7, 90}, {0x83, 60, 11}}, {0, 100, 255});
    ASSERT_TRUE(eventually([&] { return peer->received().size() >= 6; })) << program->error();
    EXPECT_EQ(bytesOf(peer->received()),
              (std::vector<std::string>{"90 60 100", "91 72 100", "B0 7 90", "B1 7 90", "80 60 11", "81 72 11"}));
    EXPECT_EQ(program->error(), "MIDI system: JACK, 1 of 2 inputs and 1 of 2 outputs open\n") << "the peer's are there";
}

TEST_F(Jack, EverythingTakesTheSameNumberOfFrames) {
    const auto program = startHeard();
    std::vector<Message> messages;
    std::vector<std::int32_t> offsets;
    for (int i = 0; i < 400; ++i) {
        messages.push_back({0xB0, static_cast<std::uint8_t>(i % 100), static_cast<std::uint8_t>(1 + i / 100)});
        offsets.push_back(i * 37 % period);
    }
    static_cast<void>(peer->takeXruns());
    peer->send(messages, offsets);
    const auto controllers = [](const std::vector<JackPeer::Event>& events) {
        std::map<std::string, std::int64_t> frames;
        for (const auto& event : events) {
            if (event.bytes.compare(0, 2, "B0") == 0) {
                frames.emplace(event.bytes, event.frame);
            }
        }
        return frames;
    };
    ASSERT_TRUE(eventually([&] { return controllers(peer->received()).size() == messages.size(); }))
        << controllers(peer->received()).size() << program->error();
    // One period in the program; one more because peer and program are a loop, where JACK hands on a period late.
    const auto sent = controllers(peer->sent());
    int exact = 0;
    for (const auto& [bytes, frame] : controllers(peer->received())) {
        exact += frame - sent.at(bytes) == 2 * period ? 1 : 0;
    }
    // A server that is not in time drops whole periods; then there is nothing to be said.
    if (peer->takeXruns() == 0) {
        EXPECT_GT(exact, 360) << "of 400";
    }
}

// At 133 beats a minute a beat is no whole number of frames.
TEST_F(Jack, AnArpeggioStandsOnItsGridFromTheFirstNoteOn) {
    const auto program =
        startHeard({"--tempo", "133", "--program",
                    file("arpeggio.prg", "<ProgramFile><Program><Layers><Layer><UpArpeggio beat=\"30\" "
                                         "length=\"15\"/></Layer></Layers></Program></ProgramFile>")});
    constexpr std::size_t notes = 60;
    static_cast<void>(peer->takeXruns());
    peer->sendAtOnce({{0x90, 60, 100}, {0x90, 64, 100}, {0x90, 67, 100}});
    const auto starts = [](const std::vector<JackPeer::Event>& events) {
        std::vector<std::int64_t> frames;
        for (const auto& event : events) {
            if (event.bytes.starts_with("90 6")) {
                frames.push_back(event.frame);
            }
        }
        return frames;
    };
    ASSERT_TRUE(eventually([&] { return starts(peer->received()).size() >= notes; })) << program->error();
    const std::vector<std::int64_t> frames = starts(peer->received());
    const std::int64_t first = starts(peer->sent()).front() + 2 * period;
    const double grid = 48000 * 60.0 / 133 / 480 * 30;
    std::size_t exact = 0;
    for (std::size_t i = 0; i < notes; ++i) {
        const double distance = static_cast<double>(frames[i] - first) - grid * static_cast<double>(i);
        exact += std::abs(distance) <= 1 ? 1 : 0;
    }
    if (peer->takeXruns() == 0) {
        EXPECT_EQ(exact, notes) << "the first at " << frames.front() << ", not at " << first;
    }
}

// A clock a period is 468.75 beats a minute.
TEST_F(Jack, TheClockOfAnInputIsFollowedAndGivenOn) {
    const auto program = startHeard({"--tempo-source", "Tembrel", "--clock-out", "Tembrel"});
    constexpr std::size_t sentClocks = 250;
    static_cast<void>(peer->takeXruns());
    peer->send({{0xFA}}, {0});
    peer->send(std::vector<Message>(sentClocks, {0xF8}), {77});
    const auto clocks = [&](const std::vector<JackPeer::Event>& events) {
        std::vector<std::int64_t> frames;
        for (const auto& event : events) {
            if (event.bytes == "F8") {
                frames.push_back(event.frame);
            }
        }
        return frames;
    };
    ASSERT_TRUE(eventually([&] { return clocks(peer->sent()).size() == sentClocks; }));
    const std::int64_t last = clocks(peer->sent()).back();
    ASSERT_TRUE(eventually([&] {
        const std::vector<std::int64_t> given = clocks(peer->received());
        return !given.empty() && given.back() >= last;
    })) << program->error();
    const auto starts = bytesOf(peer->received());
    EXPECT_EQ(std::count(starts.begin(), starts.end(), "FA"), 1) << "once, by the way of the clock";
    if (peer->takeXruns() != 0) {
        return; // a server that is not in time drops whole periods
    }
    int exact = 0;
    int compared = 0;
    for (const std::int64_t frame : clocks(peer->received())) {
        if (frame > last - 50 * period && frame <= last) {
            ++compared;
            exact += std::abs((frame - last) % period) <= 1 || period - std::abs((frame - last) % period) <= 1 ? 1 : 0;
        }
    }
    EXPECT_NEAR(compared, 50, 1);
    EXPECT_GE(exact, compared - 2);
}

TEST_F(Jack, ManyMessagesAPeriodPassInOrderWithoutLoss) {
    const auto program = startHeard();
    std::vector<Message> messages;
    std::vector<std::string> expected;
    for (int i = 0; i < 6000; ++i) {
        messages.push_back({0xB0, static_cast<std::uint8_t>(i % 120), static_cast<std::uint8_t>(i / 120)});
        expected.push_back("B0 " + std::to_string(i % 120) + ' ' + std::to_string(i / 120));
    }
    for (std::size_t i = 0; i < messages.size(); i += 750) {
        peer->sendAtOnce({messages.begin() + static_cast<std::ptrdiff_t>(i),
                          messages.begin() + static_cast<std::ptrdiff_t>(i + 750)});
    }
    const auto controllers = [&] {
        std::vector<std::string> bytes = bytesOf(peer->received());
        std::erase_if(bytes, [](const std::string& one) { return one.compare(0, 2, "B0") != 0; });
        return bytes;
    };
    const bool all = eventually([&] { return controllers().size() >= expected.size(); });
    if (peer->takeXruns() == 0 || all) {
        const auto received = controllers();
        const auto differs = std::mismatch(received.begin(), received.end(), expected.begin(), expected.end());
        program->signal(SIGTERM);
        static_cast<void>(program->waitForEnd());
        EXPECT_TRUE(differs.second == expected.end())
            << "got " << received.size() << ", at " << differs.second - expected.begin() << ": "
            << (differs.first == received.end() ? "nothing" : *differs.first) << '\n'
            << program->error();
    }
}

TEST_F(Jack, WhatIsNoMessageIsPassedOverAndCounted) {
    const auto program = startHeard();
    peer->send({{0xF0, 1, 2, 3, 0xF7}, {0x40, 3}, {0x90, 60}, {0xF1, 0}, {0x90, 60, 100}}, {0});
    ASSERT_TRUE(eventually([&] { return !peer->received().empty(); }));
    EXPECT_EQ(peer->received().front().bytes, "90 60 100");
    program->signal(SIGTERM);
    EXPECT_EQ(program->waitForEnd(), 0);
    EXPECT_NE(program->error().find("\n1 system exclusive messages"), std::string::npos) << program->error();
    EXPECT_NE(program->error().find("\n3 malformed messages"), std::string::npos) << program->error();
}

TEST_F(Jack, EndingItEndsWhatSounds) {
    const auto notes = [this] { // a server that is not in time repeats the answer to a question
        auto bytes = bytesOf(peer->received());
        std::erase_if(bytes, [](const std::string& each) { return each.starts_with("B"); });
        return bytes;
    };
    for (const int way : {SIGTERM, SIGINT, 0}) {
        SCOPED_TRACE(way);
        const auto program = startHeard({"--program", file("layered.prg", layered)});
        peer->send({{0x90, 60, 100}, {0x90, 64, 100}}, {0});
        ASSERT_TRUE(eventually([&] { return notes().size() == 4; })) << testing::PrintToString(notes());
        if (way != 0) {
            program->signal(way);
        } else {
            program->write("0 end\n");
        }
        EXPECT_EQ(program->waitForEnd(), 0) << program->error();
        ASSERT_TRUE(eventually([&] { return notes().size() == 8; })) << testing::PrintToString(notes());
        const auto received = notes();
        EXPECT_THAT(std::vector<std::string>(received.end() - 4, received.end()),
                    testing::UnorderedElementsAre("80 60 100", "81 72 100", "80 64 100", "81 76 100"));
        ASSERT_TRUE(eventually([&] { return !peer->sees("Tembrel:out"); }));
        peer->forget();
    }
}

TEST_F(Jack, PortsAreOpenedByName) {
    const auto program = start({"--in", "PEER", "--out", "peer"});
    ASSERT_TRUE(eventually([&] { return peer->connections("peer:out").size() == 1; })) << program->error();
    ASSERT_TRUE(eventually([&] { return peer->connections("peer:in").size() == 1; }));
    ASSERT_TRUE(isHeard());

    // The same port once more, after its client has gone and come back.
    peer.reset();
    startPeer();
    ASSERT_TRUE(eventually([&] { return peer->connections("peer:out").size() == 1; })) << program->error();
    ASSERT_TRUE(eventually([&] { return peer->connections("peer:in").size() == 1; }));
    ASSERT_TRUE(isHeard());

    const auto wrong = start({"--in", "nonsense"});
    EXPECT_EQ(wrong->waitForEnd(), 1);
    EXPECT_EQ(wrong->error(), "there is no MIDI input named \"nonsense\"\n");
}

TEST_F(Jack, ConnectsToTheFirstSynthesizer) {
    const auto nobody = start({"--connect"});
    EXPECT_EQ(nobody->waitForEnd(), 1);
    EXPECT_EQ(nobody->error(), "there is no synthesizer to connect to\n");

    auto synthesizer = std::make_unique<JackPeer>("Test Synth");
    const auto program = start({"--connect"});
    const auto isConnected = [&] {
        const auto names = synthesizer->connections("Test Synth:in");
        return names == std::vector<std::string>{"Tembrel:out"};
    };
    ASSERT_TRUE(eventually(isConnected)) << program->error();
    EXPECT_TRUE(peer->connections("peer:in").empty());
    program->write("0 midi 0 0x90 60 100\n");
    ASSERT_TRUE(eventually([&] { return !synthesizer->received().empty(); }));
    EXPECT_EQ(synthesizer->received().front().bytes, "90 60 100");

    synthesizer = nullptr; // one that comes back is connected again
    synthesizer = std::make_unique<JackPeer>("Test Synth");
    EXPECT_TRUE(eventually(isConnected)) << program->error();
    program->signal(SIGTERM);
    EXPECT_EQ(program->waitForEnd(), 0);
}

TEST_F(Jack, ListsPortsAndPrintsWhatArrives) {
    RunningProgram ports(tembrel, {"ports"}, folder.path());
    EXPECT_EQ(ports.waitForEnd(), 0);
    EXPECT_EQ(ports.output(), "input JACK peer:out\noutput JACK peer:in\n");

    RunningProgram monitor(tembrel, {"monitor", "--midi", "jack", "peer"}, folder.path());
    ASSERT_TRUE(eventually([&] { return peer->connections("peer:out").size() == 1; })) << monitor.error();
    ASSERT_TRUE(eventually([&] {
        peer->send({{0x90, 60, 100}}, {0});
        return !monitor.output().empty();
    }));
    EXPECT_NE(monitor.output().find(" peer:out: Note On, channel 1, 60 (C4), 100\n"), std::string::npos);
    monitor.signal(SIGINT);
    EXPECT_EQ(monitor.waitForEnd(), 0);
}

TEST_F(Jack, WatchesPortsComeAndGo) {
    RunningProgram watch(tembrel, {"ports", "--watch"}, folder.path());
    ASSERT_TRUE(eventually([&] { return watch.output().find("output JACK peer:in\n") != std::string::npos; }));
    peer.reset();
    ASSERT_TRUE(eventually([&] { return watch.output().find("\n- input JACK peer:out\n") != std::string::npos; }));
    startPeer();
    ASSERT_TRUE(eventually([&] { return watch.output().find("\n+ output JACK peer:in\n") != std::string::npos; }));
    watch.signal(SIGTERM);
    EXPECT_EQ(watch.waitForEnd(), 0);
}

} // namespace
