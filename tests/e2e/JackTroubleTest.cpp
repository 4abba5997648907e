// JACK servers that die, and that hang: nobody who plays waits for them.
#include "core/Barrier.h"
#include "core/QelMessageManager.h"
#include "e2e/JackRig.h"
#include "host/Session.h"
#include "host/live/JackHost.h"
#include "host/live/LivePlayer.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <thread>

namespace {

using namespace std::chrono_literals;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;
using Milliseconds = std::chrono::duration<double, std::milli>;

double since(std::chrono::steady_clock::time_point start) {
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

// Somebody who plays and opens and closes ports all the while, on a thread of his own.
class Hands final {
public:
    Hands(Host::LivePlayer& player, Backend::QelIF& qel) : player_(player), qel_(qel), thread_([this] { play(); }) {}
    ~Hands() { rest(); }
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;

    void rest() {
        resting_.store(true);
        if (thread_.joinable()) {
            thread_.join();
        }
    }
    void rounds(int count) const {
        const int end = rounds_.load() + count;
        ASSERT_TRUE(eventually([&] { return rounds_.load() >= end; })) << "somebody waits for the server";
    }
    // The longest time, in milliseconds, that a call took, that an event took to the engine, and that the clock stood.
    double call = 0;
    double road = 0;
    double clock = 0;

private:
    void play() {
        auto ticked = std::chrono::steady_clock::now();
        Backend::Ticks tick = player_.now();
        const auto timed = [](double& longest, const auto& operation) {
            const auto start = std::chrono::steady_clock::now();
            operation();
            longest = std::max(longest, since(start));
        };
        while (!resting_.load()) {
            const int round = ++rounds_;
            timed(call, [&] {
                player_.enableMidiOutput(1, round % 2 == 0);
                player_.enableMidiInput(1, round % 2 == 0);
                static_cast<void>(player_.system().outputs());
                for (const auto type : {MessageType::noteOn, MessageType::noteOff}) {
                    qel_.getQelMessageManager().postProcessMidiInputEvent(
                        {type, 60, 100, 0, QelMidiMessage::DEFAULT_OUTPUT, QelMidiMessage::DEFAULT_ZONE, 0,
                         Backend::noTicks});
                }
            });
            timed(road, [&] {
                Backend::Barrier barrier;
                static_cast<void>(qel_.getQelMessageManager().postBarrier(barrier));
                while (!barrier.waitFor(1ms)) {
                    watchClock(tick, ticked);
                }
            });
            std::this_thread::sleep_for(1ms);
            watchClock(tick, ticked);
        }
    }
    void watchClock(Backend::Ticks& tick, std::chrono::steady_clock::time_point& ticked) {
        if (const Backend::Ticks now = player_.now(); now.count != tick.count) {
            clock = std::max(clock, since(ticked));
            ticked = std::chrono::steady_clock::now();
            tick = now;
        }
    }

    Host::LivePlayer& player_;
    Backend::QelIF& qel_;
    std::atomic<bool> resting_ = false;
    std::atomic<int> rounds_ = 0;
    std::thread thread_;
};

class JackTrouble : public JackRig {
protected:
    // One that is heard, with a note that has been.
    std::unique_ptr<RunningProgram> startSounding(std::vector<std::string> more = {}) {
        auto program = startHeard(std::move(more));
        program->write("0 midi 0 0x90 60 100\n");
        EXPECT_TRUE(eventually([&] { return !peer->received().empty(); })) << program->error();
        return program;
    }
    [[nodiscard]] std::string played() const {
        std::ifstream file(eventFile);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    [[nodiscard]] std::int64_t frameOf(const std::string& bytes) const {
        const auto events = peer->received();
        const auto found = std::find_if(events.begin(), events.end(), [&](const auto& e) { return e.bytes == bytes; });
        return found == events.end() ? 0 : found->frame;
    }
    std::string eventFile = (folder.path() / "events").string();
};

TEST_F(JackTrouble, OutlivesTheServerWhileNotesSoundAndFindsTheNext) {
    const auto program = startSounding({"--events", eventFile});
    server.kill();
    peer.reset();
    // Nobody in the program waits for the server: its ports are gone, and what sounded there has ended.
    ASSERT_TRUE(eventually([&] { return played().find(" 80 60 ") != std::string::npos; })) << played();
    program->write("0 midi 0 0x90 64 100\n0 midi 0 0x80 64 0\n");
    server.start();
    ASSERT_TRUE(server.isRunning());
    const auto back = std::chrono::steady_clock::now();
    startPeer();
    ASSERT_TRUE(connect()) << program->error();
    ASSERT_TRUE(isHeard());
    const std::chrono::duration<double> silent = std::chrono::steady_clock::now() - back;
    RecordProperty("seconds_until_it_sounds", std::to_string(silent.count()));
    program->write("0 midi 0 0x90 72 100\n0 midi 0 0x80 72 0\n");
    ASSERT_TRUE(eventually([&] { return !peer->received().empty() && peer->received().back().bytes == "80 72 0"; }));
    server.kill();
    peer.reset();
    program->signal(SIGTERM); // with nobody there to hear the end
    EXPECT_EQ(program->waitForEnd(), 0) << program->error();
}

// In this process, so that each call can be looked at. A server that hangs keeps the watcher of the ports, which is
// told to open and close some; a bound on times would depend on what else the machine does, so they are reported.
TEST_F(JackTrouble, NobodyWaitsForTheServer) {
    const Host::PortWishes wishes;
    auto opened = Host::openJack(wishes, 20s);
    ASSERT_TRUE(opened && opened.value());
    Host::LivePlayer player(std::move(opened.value()));
    Host::SessionOptions options;
    options.data = (folder.path() / "data").string();
    Host::Session session(player, options);
    ASSERT_TRUE(session.start(player.system().inputs(), player.system().outputs()));
    player.start(session.qel());
    ASSERT_TRUE(connect());
    ASSERT_TRUE(isHeard());

    const auto during = [&](const char* what, const std::function<void(const Hands&)>& trouble) {
        Hands hands(player, session.qel());
        hands.rounds(50);
        trouble(hands);
        hands.rounds(50);
        hands.rest();
        for (const auto& [name, time] : {std::pair{"call", hands.call}, {"road", hands.road}, {"clock", hands.clock}}) {
            RecordProperty(std::string(what) + "_longest_" + name + "_ms", std::to_string(time));
        }
    };
    during("no_trouble", [](const Hands&) {});
    during("hanging_server", [&](const Hands& hands) {
        server.hang();
        hands.rounds(500);
        server.goOn();
    });
    ASSERT_TRUE(isHeard());
    peer.reset(); // the library does not bear it when two clients of one process lose their server
    during("killed_server", [&](const Hands& hands) {
        server.kill();
        hands.rounds(500);
        server.start();
    });
    ASSERT_TRUE(server.isRunning());
    startPeer();
    ASSERT_TRUE(connect());
    ASSERT_TRUE(isHeard());

    server.hang();
    {
        const Hands hands(player, session.qel());
        hands.rounds(20);
    }
    const auto start = std::chrono::steady_clock::now();
    player.releaseAll();
    session.end();
    player.stop();
    RecordProperty("hanging_server_end_ms", std::to_string(since(start)));
}

// For more than a second, after which nobody wants to hear what was meant for then.
TEST_F(JackTrouble, AServerThatGoesOnHearsNoNotesOfOldButTheirEnds) {
    const auto program = startSounding({"--events", eventFile});
    server.hang();
    const auto hangs = std::chrono::steady_clock::now();
    program->write("0 midi 0 0x90 61 100\n0 midi 0 0x80 60 0\n0 midi 0 0xB0 7 3\n0 midi 0 0x90 62 100\n");
    ASSERT_TRUE(eventually([&] { return played().find(" 90 62 ") != std::string::npos; })) << "it plays on";
    ASSERT_TRUE(eventually([&] { return since(hangs) > 1500; }));
    server.goOn();
    program->write("0 midi 0 0x80 61 0\n0 midi 0 0x80 62 0\n0 midi 0 0x90 63 100\n0 midi 0 0x80 63 1\n");
    ASSERT_TRUE(eventually([&] { return bytesOf(peer->received()).back() == "80 63 1"; }));
    const auto heard = bytesOf(peer->received());
    EXPECT_THAT(heard, testing::Not(testing::Contains("90 61 100"))) << testing::PrintToString(heard);
    EXPECT_THAT(heard, testing::Not(testing::Contains("90 62 100"))) << testing::PrintToString(heard);
    EXPECT_THAT(heard, testing::IsSupersetOf({"80 60 0", "B0 7 3", "80 62 0"})) << testing::PrintToString(heard);
    RecordProperty("frames_from_the_end_of_the_first_note_to_that_of_the_last",
                   std::to_string(peer->received().back().frame - frameOf("80 60 0")));
    program->signal(SIGTERM);
    EXPECT_EQ(program->waitForEnd(), 0);
}

TEST_F(JackTrouble, ProgramsBeginAndEndBesideAServerThatHangs) {
    const auto program = startSounding();
    server.hang();
    const auto late = start();
    EXPECT_EQ(late->waitForEnd(), 1);
    EXPECT_EQ(late->error(), "there is no JACK server that answers\n");
    const auto asked = std::chrono::steady_clock::now();
    program->signal(SIGTERM);
    EXPECT_EQ(program->waitForEnd(), 0) << program->error();
    RecordProperty("milliseconds_to_end", std::to_string(since(asked)));
    server.kill(); // going on, it would wait for the dead
    peer.reset();
}

} // namespace
