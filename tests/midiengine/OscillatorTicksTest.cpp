// A playing oscillator is given each tick once, in order, however the ticks are run.
#include "EngineRig.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <utility>

namespace {

using Backend::engineTimeOrigin;
using Backend::Ticks;
using Backend::MidiEngine::QelMidiMessage;

constexpr int oscillatorData = 7;

// Notes the ticks in which the oscillator plays, and starts and stops it with controller 1: a value above 0, and 0.
class OscillatorTap final : public Backend::MidiEngine::EngineTap {
public:
    explicit OscillatorTap(Backend::MidiEngine::MidiEngine& engine) : engine_(engine) {}
    void passed(const QelMidiMessage& message, bool) override {
        if (message.getD1() == oscillatorData) {
            ticks.push_back((message.getPpq() - engineTimeOrigin).count);
        } else {
            engine_.setOscPlaying({0}, message.getD2() > 0);
        }
    }
    std::vector<int> ticks;

private:
    Backend::MidiEngine::MidiEngine& engine_;
};

// A saw that has another value in each tick.
Backend::Oscillators::OscList sawOfEachTick() {
    Backend::Oscillators::Oscillator saw;
    saw.type = Backend::Oscillators::OscillatorType::saw;
    saw.speed = 128;
    saw.detail = 1;
    saw.midiMessage = eventOf("cc 7 0").getMidiMessage();
    saw.output = 0;
    saw.channel = 0;
    Backend::Oscillators::OscList list;
    list.append(saw);
    return list;
}

class OscillatorTicksTest : public testing::Test {
protected:
    OscillatorTicksTest() {
        rig.engine.setOscList(sawOfEachTick());
        rig.engine.addTap(tap);
    }
    std::vector<int> takeTicks() { return std::exchange(tap.ticks, {}); }

    EngineRig rig;
    OscillatorTap tap{rig.engine};
};

using Numbers = std::vector<int>;

TEST_F(OscillatorTicksTest, OneThatBeginsInATickThatIsRunAgainIsGivenThatTick) {
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

TEST_F(OscillatorTicksTest, ItBeginsWithinASliceAndSkipsNothingUntilTheEnd) {
    QelMidiMessage on = eventOf("cc 1 1");
    on.setPpq(engineTimeOrigin + Ticks{3});
    rig.engine.addPending(on);
    rig.slice(0, 6);
    rig.slice(6, 6);
    rig.slice(6, 8);
    EXPECT_EQ(takeTicks(), (Numbers{3, 4, 5, 6, 7}));
    rig.slice(8, 5008); // the computer has slept
    EXPECT_EQ(takeTicks(), Numbers{});
}

TEST_F(OscillatorTicksTest, AClockThatGoesBackBeginsAnew) {
    rig.engine.setOscPlaying({0}, true);
    rig.slice(1000, 1001);
    rig.slice(1001, 500);
    EXPECT_EQ(takeTicks().size(), 21U);
    rig.slice(500, 502);
    EXPECT_EQ(takeTicks(), (Numbers{500, 501}));
    rig.slice(300, 302); // without saying so
    EXPECT_EQ(takeTicks(), (Numbers{300, 301}));
}

// As the live clock runs ticks: each as (t, t) and (t, t + 1), the last one again for what arrives while nothing plays.
TEST_F(OscillatorTicksTest, NoTickTwiceNoneLeftOutInARandomPerformance) {
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
