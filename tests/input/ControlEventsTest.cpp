// What controls and axes put into their events, which banks they choose, and what axes make of a position.
#include "input/ControlBanks.h"
#include "input/JoystickAxis.h"
#include "input/ValueEvent.h"
#include "support/FakePlayer.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <map>

namespace {

using namespace Backend;
using Joystick::AxisEvent;
using MidiEngine::MidiMessage;
using MidiEngine::QelMidiMessage;

ValueEvent eventOf(const std::string& text, int channel = -1, int output = -1, int zone = -1) {
    return {MidiMessage(std::string_view(text)), static_cast<std::int8_t>(output), static_cast<std::int8_t>(channel),
            static_cast<std::int8_t>(zone)};
}

// "OUTPUT STATUS D1 D2"
std::string sent(const QelMidiMessage& message) {
    const std::string line = TestSupport::lineOf(message);
    return line.substr(line.find(' ') + 1);
}

TEST(ValueEvent, PutsTheNumberWhereTheTypeHasIt) {
    struct Row {
        const char* event;
        int value;
        const char* message;
    };
    const Row rows[] = {
        {"Note On,60", 100, "-1 90 60 100"},
        {"Note Off,60", 300, "-1 80 60 127"},
        {"Key Pressure,61", 5, "-1 A0 61 5"},
        {"Controller Change,7", -5, "-1 B0 7 0"},
        {"Controller Change,7", 128, "-1 B0 7 127"},
        {"Program Change", 12, "-1 C0 12"},
        {"Program Change,99", 12, "-1 C0 12"},
        {"Channel Pressure", 200, "-1 D0 127"},
        {"Pitch Bend", 0, "-1 E0 0 0"},
        {"Pitch Bend", 8192, "-1 E0 0 64"},
        {"Pitch Bend", 8191, "-1 E0 127 63"},
        {"Pitch Bend", 16383, "-1 E0 127 127"},
        {"Pitch Bend", 99999, "-1 E0 127 127"},
        {"Song Position", 300, "-1 F2 44 2"},
        {"Song Select", 3, "-1 F3 3"},
        {"Unofficial Bus Select", 4, "-1 F5 4"},
        {"Start Song", 77, "-1 FA"},
    };
    for (const Row& row : rows) {
        const ValueEvent event = eventOf(row.event);
        EXPECT_TRUE(event.canBeSent()) << row.event;
        EXPECT_EQ(sent(event.withValue(row.value)), row.message) << row.event << ' ' << row.value;
    }
    EXPECT_FALSE(eventOf("System Exclusive").canBeSent());
    EXPECT_FALSE(eventOf("controller change,7").canBeSent());
    EXPECT_EQ(sent(eventOf("Controller Change,7", 3, 2).withValue(1)), "2 B3 7 1");
    // A channel would make another system message of it.
    EXPECT_EQ(sent(eventOf("Start Song", 1, 2).withValue(1)), "2 FA");
}

TEST(ValueEvent, MatchesWhatItSendsAndReadsItsNumberBack) {
    RandomCases random;
    const char* const texts[] = {"Note On,60",     "Controller Change,7", "Controller Change,0", "Key Pressure,60",
                                 "Program Change", "Channel Pressure",    "Pitch Bend",          "Song Position",
                                 "Song Select",    "Key Pressure,61"};
    for (int round = 0; round < 2000; ++round) {
        const std::string a = texts[random.number<std::size_t>(0, std::size(texts) - 1)];
        const std::string b = texts[random.number<std::size_t>(0, std::size(texts) - 1)];
        const ValueEvent sender = eventOf(a, random.number(-1, 2), random.number(-1, 2));
        const ValueEvent follower = eventOf(b, random.number(-1, 2), random.number(-1, 2));
        const int value = random.number(0, sender.greatestValue());
        const QelMidiMessage message = sender.withValue(value);
        const bool system = a.starts_with("Song");
        const bool expected = a == b && (follower.channel < 0 || system || follower.channel == sender.channel) &&
                              (follower.output < 0 || follower.output == sender.output);
        EXPECT_EQ(follower.matches(message), expected) << a << ' ' << b;
        if (expected) {
            EXPECT_EQ(follower.valueIn(message), value) << a;
        }
    }
}

// A receiver is in the bank that was chosen last whenever a program change comes, and is told no more than it needs.
TEST(ControlBanks, AProgramChangeFollowsItsBank) {
    RandomCases random;
    struct Receiver {
        int coarse = -1;
        int fine = -1;
        bool chosenSince = false; // since the last program change
    };
    Controls::ControlBanks banks;
    std::map<int, Receiver> chosen;
    std::map<int, Receiver> receivers;
    for (int step = 0; step < 3000; ++step) {
        const int place = random.number(0, 7);
        const auto event = [&](const char* text) {
            return eventOf(text, (place & 1) - 1, (place >> 1 & 1) - 1, (place >> 2) - 1);
        };
        Receiver& receiver = receivers[place];
        const int value = random.number(0, 3);
        switch (random.number(0, 2)) {
        case 0:
            banks.remember(event("Controller Change,0"), value);
            receiver.chosenSince = receiver.chosenSince || chosen[place].coarse != value;
            chosen[place].coarse = value;
            break;
        case 1:
            banks.remember(event("Controller Change,32"), value);
            receiver.chosenSince = receiver.chosenSince || chosen[place].fine != value;
            chosen[place].fine = value;
            break;
        default: {
            banks.remember(event("Controller Change,7"), value); // none of its business
            const auto selects = banks.takeSelectsFor(event("Program Change"), {});
            EXPECT_LE(selects.size(), receiver.chosenSince ? 2U : 0U);
            for (const QelMidiMessage& select : selects) {
                EXPECT_EQ(select.getOutput(), event("").output);
                EXPECT_EQ(select.getZone(), event("").zone);
                EXPECT_EQ(select.isDefaultChannel(), event("").channel < 0);
                (select.getD1() == 0 ? receiver.coarse : receiver.fine) = select.getD2();
            }
            EXPECT_EQ(receiver.coarse, chosen[place].coarse);
            EXPECT_EQ(receiver.fine, chosen[place].fine);
            receiver.chosenSince = false;
        }
        }
    }
}

TEST(AxisEvent, MapsThePositionOntoItsRange) {
    struct Row {
        const char* event;
        int min;
        int max;
        int offset;
        int position;
        int scaled;
        const char* message;
    };
    const Row rows[] = {
        {"Controller Change,1", 0, 127, 0, 0, 0, "-1 B0 1 0"},
        {"Controller Change,1", 0, 127, 0, 32768, 64, "-1 B0 1 64"},
        {"Controller Change,1", 0, 127, 0, 65535, 127, "-1 B0 1 127"},
        {"Controller Change,1", 127, 0, 0, 0, 127, "-1 B0 1 127"},
        {"Controller Change,1", 127, 0, 0, 32768, 63, "-1 B0 1 63"},
        {"Controller Change,1", 127, 0, 0, 65535, 0, "-1 B0 1 0"},
        {"Controller Change,1", 0, 127, 100, 32768, 164, "-1 B0 1 127"},
        {"Controller Change,1", 0, 127, -100, 32768, -36, "-1 B0 1 0"},
        {"Pitch Bend", 0, 16383, 0, 32768, 8192, "-1 E0 0 64"},
        {"Pitch Bend", 0, 16383, 0, 32767, 8191, "-1 E0 127 63"},
        {"Pitch Bend", 0, 16383, 0, 99999, 16383, "-1 E0 127 127"},
        {"Pitch Bend", -8192, 8191, 8192, 0, 0, "-1 E0 0 0"},
    };
    for (const Row& row : rows) {
        const AxisEvent event{eventOf(row.event), row.min, row.max, row.offset};
        EXPECT_EQ(event.scaled(row.position), row.scaled) << row.event << ' ' << row.min << ' ' << row.position;
        EXPECT_EQ(sent(event.at(row.position)), row.message) << row.event << ' ' << row.min << ' ' << row.position;
    }
}

TEST(AxisEvent, IsExactAtBothEndsAndNeverTurnsBack) {
    RandomCases random;
    for (int round = 0; round < 300; ++round) {
        const int reach = random.number(0, 1) == 0 ? 20'000 : 2'000'000'000;
        const AxisEvent event{eventOf("Pitch Bend"), random.number(-reach, reach), random.number(-reach, reach), 0};
        EXPECT_EQ(event.scaled(0), event.min);
        EXPECT_EQ(event.scaled(65535), event.max);
        const int position = random.number(0, 65534);
        EXPECT_LE((event.scaled(position) > event.scaled(position + 1)), event.min > event.max);
        EXPECT_LE((event.scaled(position) < event.scaled(position + 1)), event.min < event.max);
    }
}

} // namespace
