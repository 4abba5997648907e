// Oscillators: their waves, speeds and stops.
#include "generators/OscillatorRack.h"
#include "generators/OscillatorSpeed.h"
#include "generators/RunningOscillator.h"
#include "support/RandomCases.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {

using namespace Backend::Oscillators;
using Backend::engineTimeOrigin;
using Backend::Ticks;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using Backend::MidiEngine::QelMidiMessage;

constexpr std::int32_t tableTicks = 700;

OscillatorType typeOf(const std::string& word) {
    const std::map<std::string, OscillatorType> types{{"sin", OscillatorType::sine},
                                                      {"tri", OscillatorType::triangle},
                                                      {"saw", OscillatorType::saw},
                                                      {"pulse", OscillatorType::pulse},
                                                      {"random", OscillatorType::random}};
    const auto found = types.find(word);
    return found == types.end() ? OscillatorType::unknown : found->second;
}

Oscillator oscillatorOf(OscillatorType type, std::int32_t speed, std::int32_t min, std::int32_t max,
                        std::int32_t detail) {
    Oscillator oscillator;
    oscillator.id = 0;
    oscillator.type = type;
    oscillator.speed = speed;
    oscillator.min = min;
    oscillator.max = max;
    oscillator.detail = detail;
    oscillator.midiMessage = MidiMessage(MessageType::controllerChange, 1);
    oscillator.playing = true;
    return oscillator;
}

std::string wave(const Oscillator& oscillator) {
    RunningOscillator running(oscillator);
    std::string text;
    for (std::int32_t tick = 1; tick <= tableTicks; ++tick) {
        if (const auto step = running.advance(engineTimeOrigin + Ticks{tick})) {
            text += (text.empty() ? "" : " ") + std::to_string(tick) + ":" + std::to_string(step->value);
        }
    }
    return text;
}

// What comes out of a rack, one message a line.
struct Recorder final : OscillatorOutput {
    void playFromOscillator(const QelMidiMessage& message) override {
        std::ostringstream line;
        line << static_cast<int>(message.getStatusWithChannel()) << ' ' << int{message.getD1()} << ' '
             << int{message.getD2()};
        played.push_back(line.str());
    }
    void oscillatorMoved(OscId id, std::int32_t value) override { moved[id.index].push_back(value); }

    std::vector<std::string> played;
    std::map<std::int32_t, std::vector<std::int32_t>> moved;
};

class RackTest : public ::testing::Test {
protected:
    void run(std::int32_t ticks) {
        for (; ticks > 0; --ticks) {
            rack.advance(++now);
        }
    }
    Recorder recorder;
    OscillatorRack rack{recorder};
    Ticks now = engineTimeOrigin;
};

// oscillator_table.py works the table out from the formulas.
TEST(Oscillators, SendWhatTheTableSays) {
    std::ifstream table(TEMBREL_SOURCE_DIR "/tests/generators/oscillators.table");
    int cases = 0;
    for (std::string settings, expected; std::getline(table, settings) && std::getline(table, expected); ++cases) {
        std::istringstream fields(settings);
        std::string name;
        std::string type;
        std::string number;
        std::getline(fields, name, '|');
        std::getline(fields, type, '|');
        std::vector<std::int32_t> numbers;
        while (std::getline(fields, number, '|')) {
            numbers.push_back(std::stoi(number));
        }
        ASSERT_EQ(numbers.size(), 4U) << name;
        EXPECT_EQ(wave(oscillatorOf(typeOf(type), numbers[0], numbers[1], numbers[2], numbers[3])), expected) << name;
    }
    EXPECT_GT(cases, 20);
}

TEST(Oscillators, MirroredIsTheMirrorImage) {
    for (const OscillatorType type : {OscillatorType::sine, OscillatorType::triangle, OscillatorType::pulse,
                                      OscillatorType::random, OscillatorType::saw}) {
        RunningOscillator up(oscillatorOf(type, 90, 20, 100, 1));
        RunningOscillator down(oscillatorOf(type, 90, 100, 20, 1));
        for (Ticks t = engineTimeOrigin; t < engineTimeOrigin + Ticks{400}; ++t) {
            const auto a = up.advance(t);
            const auto b = down.advance(t);
            ASSERT_EQ(a.has_value(), b.has_value()) << t.count;
            if (a) {
                ASSERT_EQ(b->value, 120 - a->value - (type == OscillatorType::saw ? 1 : 0)) << t.count;
            }
        }
    }
}

TEST(Oscillators, TimeThatHasPassedCountsWholeAndTimeThatGoesBackAsOneTick) {
    const Oscillator pulse = oscillatorOf(OscillatorType::pulse, 200, 0, 127, 1);
    RunningOscillator running(pulse);
    EXPECT_EQ(running.advance(Ticks{1000})->value, 0);
    EXPECT_EQ(running.advance(Ticks{1101})->value, 127); // 102 ticks
    EXPECT_FALSE(running.advance(Ticks{10}));            // 103
    EXPECT_FALSE(running.advance(Ticks{105}));           // 198
    EXPECT_EQ(running.advance(Ticks{109})->value, 0);    // 202
    running.resume();
    EXPECT_FALSE(running.advance(Ticks{99'109})); // 203
}

TEST(Oscillators, KeepTheirRangeForEver) {
    for (const OscillatorType type : {OscillatorType::sine, OscillatorType::triangle, OscillatorType::pulse,
                                      OscillatorType::random, OscillatorType::saw}) {
        RunningOscillator running(oscillatorOf(type, 1, 2'147'483'647, 0, 1));
        std::int32_t last = 0;
        for (int jump = 0; jump < 2000; ++jump) {
            last = jump % 2 == 0 ? 2'147'483'600 : 10; // ticks as far apart as there are
            if (const auto step = running.advance(Ticks{last})) {
                ASSERT_GE(step->value, -1) << jump; // a mirrored saw stands one lower
            }
        }
    }
}

TEST(Oscillators, PutTheirValueWhereTheMessageHasIts) {
    struct Row {
        MessageType type;
        std::int32_t value;
        int d1;
        int d2;
    };
    const Row rows[] = {
        {MessageType::controllerChange, 100, 7, 100}, {MessageType::controllerChange, 300, 7, 127},
        {MessageType::controllerChange, -5, 7, 0},    {MessageType::pitchBend, 8192, 0, 64},
        {MessageType::pitchBend, 16383, 127, 127},    {MessageType::pitchBend, 99999, 127, 127},
        {MessageType::channelPressure, 90, 90, 9},    {MessageType::noteOn, 60, 60, 9},
        {MessageType::programChange, 128, 127, 9},
    };
    for (const Row& row : rows) {
        Oscillator oscillator;
        oscillator.midiMessage = MidiMessage(row.type, 7, 9, 0);
        oscillator.channel = 3;
        oscillator.output = 2;
        oscillator.zone = 4;
        const QelMidiMessage message = RunningOscillator(oscillator).messageOf(row.value);
        EXPECT_EQ(int{message.getD1()}, row.d1) << static_cast<int>(row.type) << ' ' << row.value;
        EXPECT_EQ(int{message.getD2()}, row.d2) << static_cast<int>(row.type) << ' ' << row.value;
        EXPECT_EQ(int{message.getChannel()}, 3);
        EXPECT_FALSE(message.isDefaultChannel());
        EXPECT_EQ(int{message.getOutput()}, 2);
        EXPECT_EQ(int{message.getZone()}, 4);
        EXPECT_EQ(int{message.getInput()}, -1);
    }
    EXPECT_TRUE(RunningOscillator(Oscillator{}).messageOf(1).isDefaultChannel());
}

TEST(Oscillators, RelativeStepsGoThroughTheNoteLengths) {
    struct Row {
        std::int32_t from;
        std::int32_t faster;
        std::int32_t slower;
    };
    const Row rows[] = {
        {480, 360, 640},       {40, 40, 60},          {39, 39, 60},        {41, 40, 80},        {30720, 15360, 30720},
        {99999, 15360, 99999}, {15361, 15360, 15361}, {7680, 3840, 15360}, {7681, 7680, 30720},
    };
    for (const Row& row : rows) {
        Oscillator oscillator = oscillatorOf(OscillatorType::sine, row.from, 0, 127, 1);
        oscillator.steppedSpeed = true;
        EXPECT_EQ(changedSpeed(oscillator, RelativeFixedValue::relative(1)), row.faster) << row.from;
        EXPECT_EQ(changedSpeed(oscillator, RelativeFixedValue::relative(12)), row.faster) << row.from;
        EXPECT_EQ(changedSpeed(oscillator, RelativeFixedValue::relative(-1)), row.slower) << row.from;
        EXPECT_EQ(changedSpeed(oscillator, RelativeFixedValue{}), row.from);
        EXPECT_EQ(changedSpeed(oscillator, RelativeFixedValue::fixed(77)), 77);
        EXPECT_EQ(changedSpeed(oscillator, RelativeFixedValue::fixed(0)), 1);
    }
}

TEST(Oscillators, ScaledSpeedsKeepTheirPlaces) {
    EXPECT_EQ(scaledSpeed(127), 40);
    EXPECT_EQ(scaledSpeed(0), 30720);
    EXPECT_EQ(scaledSpeed(64), 1080); // 40 x 768^(63/127)
    EXPECT_EQ(scaledSpeed(-1), 30720);
    EXPECT_EQ(scaledSpeed(500), 40);
    for (std::int32_t place = 0; place < 128; ++place) {
        ASSERT_EQ(placeOfSpeed(scaledSpeed(place)), place);
        Oscillator oscillator = oscillatorOf(OscillatorType::sine, scaledSpeed(place), 0, 127, 1);
        EXPECT_EQ(changedSpeed(oscillator, RelativeFixedValue::relative(1)), scaledSpeed(place + 1));
        EXPECT_EQ(changedSpeed(oscillator, RelativeFixedValue::relative(-3)), scaledSpeed(place - 3));
    }
    EXPECT_EQ(changedSpeed(oscillatorOf(OscillatorType::sine, 7, 0, 127, 1), RelativeFixedValue::relative(1)), 7)
        << "a step to faster makes nothing slower";
}

TEST_F(RackTest, StopsWithTheStopValueOnceAndGoesOnWhereItWas) {
    OscList list;
    Oscillator pulse = oscillatorOf(OscillatorType::pulse, 20, 1, 90, 1);
    pulse.stopValue = 64;
    pulse.playing = false;
    list.append(pulse);
    rack.set(list);
    run(100);
    EXPECT_FALSE(rack.isPlaying());
    EXPECT_FALSE(rack.setPlaying({0}, false));
    EXPECT_TRUE(recorder.played.empty());
    EXPECT_FALSE(rack.setPlaying({0}, true));
    run(15); // 5 of them in the second half
    EXPECT_EQ(recorder.played, (std::vector<std::string>{"176 1 1", "176 1 90"}));
    const auto stopped = rack.setPlaying({0}, false);
    ASSERT_TRUE(stopped);
    EXPECT_EQ(int{stopped->getD2()}, 64);
    EXPECT_FALSE(rack.setPlaying({0}, false));
    run(1000);
    EXPECT_EQ(recorder.played.size(), 2U);
    rack.setPlaying({0}, true);
    run(1);
    EXPECT_EQ(recorder.played.back(), "176 1 90") << "what the stop value has replaced";
    EXPECT_EQ(recorder.played.size(), 3U);
    run(5);
    EXPECT_EQ(recorder.played.back(), "176 1 1") << "the rest of the half";
    EXPECT_FALSE(rack.setPlaying({1}, true));
    EXPECT_FALSE(rack.setPlaying({-1}, true));
}

TEST_F(RackTest, AnotherListStopsThoseThatItDoesNotPlay) {
    OscList list;
    for (const std::int32_t stopValue : {10, -1, 30}) {
        Oscillator oscillator = oscillatorOf(OscillatorType::pulse, 20, 0, 127, 1);
        oscillator.stopValue = stopValue;
        list.append(oscillator);
    }
    rack.set(list);
    run(1);
    recorder.played.clear();
    list.find({0})->playing = false;
    rack.set(list);
    EXPECT_EQ(recorder.played, std::vector<std::string>{"176 1 10"});
    EXPECT_TRUE(rack.isPlaying());
    rack.set({});
    EXPECT_EQ(recorder.played.back(), "176 1 30");
    EXPECT_FALSE(rack.isPlaying());
}

TEST_F(RackTest, EverySecondSentValueOfAContinuousWaveIsShown) {
    OscList list;
    list.append(oscillatorOf(OscillatorType::sine, 480, 0, 127, 3));
    list.append(oscillatorOf(OscillatorType::pulse, 100, 0, 127, 3));
    Oscillator mute = oscillatorOf(OscillatorType::pulse, 100, 0, 127, 3);
    mute.midiMessage = MidiMessage{};
    list.append(mute);
    rack.set(list);
    run(480);
    const std::size_t pulses = recorder.moved[1].size();
    EXPECT_EQ(pulses, 10U);
    EXPECT_EQ(recorder.moved[2], recorder.moved[1]);
    EXPECT_EQ(recorder.moved[0].size(), (recorder.played.size() - pulses) / 2);
}

// Whatever is done to them, two racks that are done the same play the same, and values are MIDI.
TEST_F(RackTest, RandomPlayRepeatsAndIsMidi) {
    RandomCases random;
    OscList list;
    for (int i = 0; i < 12; ++i) {
        constexpr std::int32_t wide = 2'147'483'647;
        const bool extreme = random.number(0, 5) == 0;
        Oscillator oscillator =
            oscillatorOf(static_cast<OscillatorType>(random.number(-1, 4)), random.number(-1, 500),
                         random.number(extreme ? -wide - 1 : -20, extreme ? wide : 140),
                         random.number(extreme ? -wide - 1 : -20, extreme ? wide : 140), random.number(-1, 12));
        oscillator.playing = random.number(0, 1) == 1;
        list.append(oscillator);
    }
    Recorder twinRecorder;
    OscillatorRack twin(twinRecorder);
    rack.set(list);
    twin.set(list);
    for (int i = 0; i < 2000; ++i) {
        const OscId id{random.number(-1, 12)};
        const bool on = random.number(0, 1) == 1;
        const std::int32_t speed = random.number(-5, 2000);
        switch (random.number(0, 20)) {
        case 0:
            rack.setPlaying(id, on);
            twin.setPlaying(id, on);
            break;
        case 1:
            rack.setSpeed(id, speed);
            twin.setSpeed(id, speed);
            break;
        default:
            break;
        }
        rack.advance(++now);
        twin.advance(now);
    }
    EXPECT_EQ(recorder.played, twinRecorder.played);
    for (const std::string& line : recorder.played) {
        std::istringstream fields(line);
        int status = 0;
        int d1 = 0;
        int d2 = 0;
        fields >> status >> d1 >> d2;
        ASSERT_TRUE(d1 == 1 && d2 >= 0 && d2 <= 127) << line;
    }
}

} // namespace
