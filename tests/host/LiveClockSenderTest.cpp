// MIDI clock for other devices.
#include "host/live/ClockSender.h"
#include "host/live/SleepingClock.h"

#include <gtest/gtest.h>

namespace Host {
namespace {

using Backend::engineTimeOrigin;
using Backend::Ticks;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

// Ports in name only, which remember what was sent.
class RecordingSystem final : public MidiSystem {
public:
    [[nodiscard]] std::string name() const override { return "recording"; }
    [[nodiscard]] std::unique_ptr<Clock> createClock(ClockedEngine& engine) override {
        return std::make_unique<SleepingClock>(engine);
    }
    void start(MidiSystemListener&) override {}
    void stop() override {}
    [[nodiscard]] std::vector<Backend::MidiInputPort> inputs() const override { return {}; }
    [[nodiscard]] std::vector<Backend::MidiOutputPort> outputs() const override { return ports; }
    void enableInput(int, bool) override {}
    void enableOutput(int, bool) override {}
    void send(const QelMidiMessage& message) noexcept override {
        const int status = message.getStatusWithChannel();
        sent += std::to_string(message.getOutput()) + ":" + std::to_string(status) + "," +
                std::to_string(message.getD1() + 128 * message.getD2()) + "@" + std::to_string(message.getPpq().count) +
                " ";
    }
    [[nodiscard]] MidiSystemCounts counts() const noexcept override { return {}; }

    std::vector<Backend::MidiOutputPort> ports{{{"Drums", "", true}}, {{"Piano", "", true}}, {{"Drum loop", "", true}}};
    std::string sent;
};

TEST(ClockSender, SendsEachTwentiethTickOnceToTheOutputsThatAreMeant) {
    RecordingSystem system;
    ClockSender sender(system, {"drum"});
    sender.lookAtPorts();
    for (int i = 0; i < 41; ++i) {
        sender.tick(engineTimeOrigin + Ticks{i});
        sender.tick(engineTimeOrigin + Ticks{i}); // run again
    }
    EXPECT_EQ(system.sent, "0:248,0@50000000 2:248,0@50000000 0:248,0@50000020 2:248,0@50000020 0:248,0@50000040 "
                           "2:248,0@50000040 ");
    system.sent.clear();
    system.ports[2].enabled = false;
    sender.lookAtPorts();
    sender.transport(Transport::start, 0);
    sender.transport(Transport::stop, 0);
    sender.transport(Transport::goOn, 300);
    EXPECT_EQ(system.sent, "0:250,0@-1 0:252,0@-1 0:242,300@-1 0:251,0@-1 ");
}

TEST(ClockSender, TakesThePlaceOfAClockThatPasses) {
    RecordingSystem system;
    ClockSender sender(system, {"Piano"});
    sender.lookAtPorts();
    const auto displaced = [&](MessageType type, int output, int input) {
        return sender.displaces(
            QelMidiMessage(type, 0, 0, 0, static_cast<std::int8_t>(output), -1, static_cast<std::int8_t>(input), {}));
    };
    EXPECT_TRUE(displaced(MessageType::timingTick, 1, 0));
    EXPECT_TRUE(displaced(MessageType::startSong, 1, 3));
    EXPECT_FALSE(displaced(MessageType::startSong, 0, 3)) << "another output";
    EXPECT_FALSE(displaced(MessageType::startSong, 1, -1)) << "a key of ours";
    EXPECT_FALSE(displaced(MessageType::noteOn, 1, 0));
}

} // namespace
} // namespace Host
