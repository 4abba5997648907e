// Messages to bytes and back, and the queue of those that leave.
#include "host/live/DueQueue.h"
#include "host/live/MessageText.h"
#include "host/live/MidiBytes.h"
#include "support/RandomCases.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace Host {
namespace {

using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using Backend::MidiEngine::QelMidiMessage;
using Bytes = std::vector<std::uint8_t>;

struct ArrivalCase {
    const char* name;
    Bytes bytes;
    Arrival arrival;
};

TEST(MidiBytes, TellsMessagesFromWhatNoPortShouldDeliver) {
    const ArrivalCase cases[] = {
        {"note on", {0x93, 60, 100}, Arrival::message},
        {"program change", {0xCF, 127}, Arrival::message},
        {"song position", {0xF2, 1, 2}, Arrival::message},
        {"bus select", {0xF5, 1}, Arrival::message},
        {"timing tick", {0xF8}, Arrival::message},
        {"nothing", {}, Arrival::malformed},
        {"running status", {60, 100}, Arrival::malformed},
        {"too short", {0x90, 60}, Arrival::malformed},
        {"too long", {0xC0, 1, 2}, Arrival::malformed},
        {"two messages", {0xF8, 0xF8}, Arrival::malformed},
        {"data above 127", {0x90, 60, 0x80}, Arrival::malformed},
        {"time code", {0xF1, 3}, Arrival::malformed},
        {"undefined", {0xF4}, Arrival::malformed},
        {"undefined real time", {0xFD}, Arrival::malformed},
        {"system exclusive", {0xF0, 1, 2, 3, 0xF7}, Arrival::sysEx},
        {"a megabyte of it", std::vector<std::uint8_t>(std::size_t{1} << 20, 0xF0), Arrival::sysEx},
        {"cut system exclusive", {0xF0}, Arrival::sysEx},
        {"end of one", {0xF7}, Arrival::sysEx},
    };
    for (const ArrivalCase& one : cases) {
        MidiBytes bytes;
        EXPECT_EQ(readMidiBytes(one.bytes.data(), one.bytes.size(), bytes), one.arrival) << one.name;
        EXPECT_EQ(bytes.size, one.arrival == Arrival::message ? one.bytes.size() : 0u) << one.name;
    }
}

TEST(MidiBytes, EveryMessageComesBackAsTheBytesItCameIn) {
    for (int status = 0x80; status <= 0xFF; ++status) {
        for (const std::size_t size : {1u, 2u, 3u}) {
            const Bytes raw{static_cast<std::uint8_t>(status), 17, 99};
            MidiBytes bytes;
            if (readMidiBytes(raw.data(), size, bytes) != Arrival::message) {
                continue;
            }
            const QelMidiMessage message = toMessage(bytes, 3, {50'000'000}, 777);
            EXPECT_EQ(message.getInput(), 3);
            EXPECT_EQ(message.getHostTime(), 777);
            const MidiBytes back = toBytes(message);
            ASSERT_EQ(back.size, bytes.size) << status;
            EXPECT_TRUE(std::equal(raw.begin(), raw.begin() + back.size, back.bytes.begin())) << status;
        }
    }
}

TEST(MidiBytes, NoPortSendsWhatAnotherWouldChokeOn) {
    const QelMidiMessage wrong[] = {
        QelMidiMessage(MessageType::noteOn, -1, 100, 0, 0, -1, -1, {}),
        QelMidiMessage(MessageType::noteOn, 60, -128, 0, 0, -1, -1, {}),
        QelMidiMessage(MessageType::systemExclusive, 1, 2, 0, 0, -1, -1, {}),
        QelMidiMessage(MessageType::none, 1, 2, 0, 0, -1, -1, {}),
        QelMidiMessage(MessageType::songSelect, 1, 0, 5, 0, -1, -1, {}), // with this channel an end of SysEx
    };
    for (const QelMidiMessage& message : wrong) {
        EXPECT_EQ(toBytes(message).size, 0) << message.getEventName();
    }
}

TEST(MessageText, NamesWhatAMessageHas) {
    const struct {
        MidiMessage message;
        const char* text;
    } cases[] = {
        {{MessageType::noteOn, 60, 100, 0}, "Note On, channel 1, 60 (C4), 100"},
        {{MessageType::noteOff, 61, 0, 15}, "Note Off, channel 16, 61 (C#4), 0"},
        {{MessageType::controllerChange, 7, 90, 1}, "Controller Change, channel 2, 7: Channel Volume, 90"},
        {{MessageType::programChange, 5, 0, 0}, "Program Change, channel 1, 5"},
        {{MessageType::keyPressure, 60, 3, 0}, "Key Pressure, channel 1, 60, 3"},
        {{MessageType::pitchBend, 0, 64, 0}, "Pitch Bend, channel 1, 8192"},
        {{MessageType::songPosition, 1, 1, 0}, "Song Position, 129"},
        {{MessageType::timingTick, 0, 0, 0}, "Timing Tick"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(textOf(one.message), one.text);
    }
}

TEST(DueQueue, GivesWhatItGotInOrderOfTimeAndThenOfArrival) {
    RandomCases cases;
    auto& random = cases.generator();
    DueQueue queue(64);
    std::vector<std::pair<std::int64_t, std::uint8_t>> model;
    std::int64_t base = 0;
    for (int step = 0; step < 20'000; ++step) {
        const auto number = static_cast<std::uint8_t>(step);
        if (random() % 2 == 0) {
            base += random() % 3;
            const std::int64_t due = base + static_cast<std::int64_t>(random() % 10) - 5;
            MidiBytes bytes;
            bytes.bytes[0] = number;
            ASSERT_EQ(queue.push({due, bytes}), model.size() < 64);
            if (model.size() < 64) {
                model.insert(std::upper_bound(model.begin(), model.end(), due,
                                              [](std::int64_t a, const auto& b) { return a < b.first; }),
                             {due, number});
            }
        } else if (!model.empty()) {
            ASSERT_NE(queue.front(), nullptr);
            ASSERT_EQ(queue.front()->due, model.front().first);
            ASSERT_EQ(queue.front()->bytes.bytes[0], model.front().second);
            queue.pop();
            model.erase(model.begin());
        } else {
            ASSERT_EQ(queue.front(), nullptr);
        }
        ASSERT_EQ(queue.size(), model.size());
    }
}

} // namespace
} // namespace Host
