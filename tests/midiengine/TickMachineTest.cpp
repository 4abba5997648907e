// What acts on ticks is given each of them once, in order, however the ticks are run.
#include "EngineRig.h"
#include "values/RandomCases.h"

#include <gtest/gtest.h>
#include <utility>

namespace {

using Backend::engineTimeOrigin;
using Backend::Ticks;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;

// Plays from a controller with a value above 0 up to one with 0, as far as it is the controller that it follows.
class CountingMachine final : public Backend::TickMachine, public Backend::MidiEngine::EngineTap {
public:
    void advance(Ticks now) override { ticks.push_back((now - engineTimeOrigin).count); }
    [[nodiscard]] bool isPlaying() const override { return playing; }
    void passed(const QelMidiMessage& message, bool) override {
        playing = message.isControllerChange() ? message.getD2() > 0 : playing;
    }
    bool playing = false;
    std::vector<int> ticks;
};

class TickMachineTest : public testing::Test {
protected:
    TickMachineTest() {
        rig.engine.addTap(machine);
        rig.engine.addMachine(machine);
    }
    std::vector<int> takeTicks() { return std::exchange(machine.ticks, {}); }

    EngineRig rig;
    CountingMachine machine;
};

using Numbers = std::vector<int>;

TEST_F(TickMachineTest, OneThatBeginsInATickThatIsRunAgainIsGivenThatTick) {
    rig.slice(5, 6);
    EXPECT_EQ(takeTicks(), Numbers{});
    rig.engine.addPending(eventOf("cc 1 1"));
    rig.slice(5, 5);
    rig.slice(5, 6);
    EXPECT_EQ(takeTicks(), Numbers{5});
    rig.slice(5, 5);
    rig.slice(5, 6); // nobody does that while it plays; if so, nothing happens
    rig.slice(6, 9);
    EXPECT_EQ(takeTicks(), (Numbers{6, 7, 8}));
    rig.engine.addPending(eventOf("cc 1 0")); // it stops in tick 9, behind the last one that it is given
    rig.slice(9, 9);
    rig.slice(9, 20);
    EXPECT_EQ(takeTicks(), Numbers{});
}

TEST_F(TickMachineTest, ItBeginsWithinASliceAndSkipsNothingUntilTheEnd) {
    QelMidiMessage on = eventOf("cc 1 1");
    on.setPpq(engineTimeOrigin + Ticks{3});
    rig.engine.addPending(on);
    rig.slice(0, 6);
    rig.slice(6, 6);
    rig.slice(6, 8);
    EXPECT_EQ(takeTicks(), (Numbers{3, 4, 5, 6, 7}));
    rig.slice(8, 5008); // the machine has slept
    EXPECT_EQ(takeTicks(), Numbers{});
    rig.engine.removeMachine(machine);
    rig.slice(5008, 5010);
    EXPECT_EQ(takeTicks(), Numbers{});
}

TEST_F(TickMachineTest, AClockThatGoesBackBeginsAnew) {
    machine.playing = true;
    rig.slice(1000, 1001);
    rig.slice(1001, 500);
    EXPECT_EQ(takeTicks().size(), 21U);
    rig.slice(500, 502);
    EXPECT_EQ(takeTicks(), (Numbers{500, 501}));
    rig.slice(300, 302); // without saying so
    EXPECT_EQ(takeTicks(), (Numbers{300, 301}));
}

// As the live clock runs ticks: each as (t, t) and (t, t + 1), the last one again for what arrives while nothing plays.
TEST_F(TickMachineTest, NoTickTwiceNoneLeftOutInARandomPerformance) {
    RandomCases random;
    int last = -1;
    bool played = false;
    for (int tick = 0; tick < 3000; ++tick) {
        const int again = random.number(0, 3);
        for (int i = 0; i <= again; ++i) {
            if (i > 0 && rig.engine.isTickDependent()) {
                rig.slice(tick + 1, tick + 1); // taken in for the next tick
                continue;
            }
            rig.slice(tick, tick);
            rig.slice(tick, tick + 1);
            for (const int given : takeTicks()) {
                ASSERT_GT(given, last);
                if (played) {
                    ASSERT_EQ(given, last + 1);
                }
                last = given;
            }
            if (random.number(0, 9) == 0) {
                rig.engine.addPending(eventOf(random.number(0, 1) == 0 ? "cc 1 0" : "cc 1 1"));
            }
            if (rig.engine.isTickDependent()) {
                ASSERT_EQ(last, tick) << "it plays and was not given the tick";
            }
            played = rig.engine.isTickDependent();
        }
    }
}

} // namespace
