// The end of a run while notes sound and more arrive: every Note On that a port was given has had its Note Off.
#include "host/Session.h"
#include "host/live/LivePlayer.h"
#include "host/live/NoSystem.h"
#include "host/live/SleepingClock.h"
#include "support/RandomCases.h"
#include "support/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <mutex>
#include <set>
#include <tuple>

namespace {

using namespace Host;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

// Ports that remember what a synthesizer behind them would sound.
class HeardSystem final : public MidiSystem {
public:
    [[nodiscard]] std::string name() const override { return "heard"; }
    [[nodiscard]] std::unique_ptr<Clock> createClock(ClockedEngine& engine) override {
        return std::make_unique<SleepingClock>(engine);
    }
    void start(MidiSystemListener& each) override { listener = &each; }
    void stop() override {}
    [[nodiscard]] std::vector<Backend::MidiInputPort> inputs() const override { return ports_.inputs(); }
    [[nodiscard]] std::vector<Backend::MidiOutputPort> outputs() const override { return ports_.outputs(); }
    void enableInput(int, bool) override {}
    void enableOutput(int, bool) override {}
    void send(const QelMidiMessage& message) noexcept override {
        const std::lock_guard lock(mutex_);
        const std::tuple place{message.getOutput(), message.getChannel(), message.getD1()};
        if (message.isNoteOn()) {
            sounding_.insert(place);
            began.signal();
        } else if (message.isNoteOff()) {
            sounding_.erase(place);
        }
    }
    [[nodiscard]] MidiSystemCounts counts() const noexcept override { return {}; }
    [[nodiscard]] std::size_t sounding() {
        const std::lock_guard lock(mutex_);
        return sounding_.size();
    }

    MidiSystemListener* listener = nullptr;
    Platform::AutoResetEvent began;

private:
    NoSystem ports_{{"In"}, {"Out 1", "Out 2"}};
    std::mutex mutex_;
    std::set<std::tuple<int, int, int>> sounding_;
};

TEST(LiveStop, LeavesNothingSounding) {
    constexpr int trials = 60;
    const TemporaryFolder folder;
    const auto program = (folder.path() / "arpeggio.prg").string();
    std::ofstream(program) << "<ProgramFile><Program><Layers><Layer><ChordArpeggio beat=\"2\" length=\"3\"/></Layer>"
                              "<Layer output=\"1\" mono=\"true\"/><Layer channel=\"1\" toggle=\"type1\"/></Layers>"
                              "</Program></ProgramFile>";
    RandomCases random;
    for (int trial = 0; trial < trials; ++trial) {
        auto owned = std::make_unique<HeardSystem>();
        HeardSystem& system = *owned;
        LivePlayer player(std::move(owned));
        SessionOptions options;
        options.data = (folder.path() / "data").string();
        options.program = program;
        options.tempo = 500;
        Session session(player, options);
        ASSERT_TRUE(session.start(system.inputs(), system.outputs()));
        player.start(session.qel());
        const auto press = [&] {
            for (int notes = random.number(1, 20); notes > 0; --notes) {
                const QelMidiMessage noteOn(MessageType::noteOn, random.number<std::int8_t>(40, 80), 100, 0,
                                            QelMidiMessage::DEFAULT_OUTPUT, QelMidiMessage::DEFAULT_ZONE, 0,
                                            Backend::noTicks);
                system.listener->received({noteOn}, {});
            }
        };
        press();
        if (trial % 3 != 0) {
            system.began.wait();
        }
        press(); // on the way while it ends
        player.releaseAll();
        session.end();
        player.stop();
        ASSERT_EQ(system.sounding(), 0U) << "trial " << trial;
        ASSERT_EQ(player.heldNotes(), 0) << "trial " << trial;
    }
}

} // namespace
