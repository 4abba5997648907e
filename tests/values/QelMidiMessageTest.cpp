#include "values/QelMidiMessage.h"

#include "support/RandomCases.h"

#include <gtest/gtest.h>

namespace Backend::MidiEngine {
namespace {

std::string routing(const QelMidiMessage& message) {
    return "out " + std::to_string(message.getOutput()) + " zone " + std::to_string(message.getZone()) + " in " +
           std::to_string(message.getInput()) + (message.isDefaultChannel() ? " default channel" : " channel ") +
           (message.isDefaultChannel() ? "" : std::to_string(message.getChannel()));
}

std::string origin(const QelMidiMessage& message) {
    return "ppq " + std::to_string(message.getPpq().count) + " cell " + message.getFromControl().toXmlString() +
           " host time " + std::to_string(message.getHostTime()) + (message.isQelReset() ? " reset" : "") +
           (message.isQelHardReset() ? " hard reset" : "");
}

const std::string noOrigin = "ppq -1 cell -1,-1 host time -1";

TEST(QelMidiMessageTest, RoutingOfEachConstructorAndFactory) {
    struct Row {
        const char* name;
        QelMidiMessage message;
        const char* routing;
        std::string origin;
    };
    const MidiMessage note(MessageType::noteOn, 60, 100, 9);
    const std::vector<Row> rows{
        {"default", QelMidiMessage(), "out -1 zone -1 in -1 default channel", noOrigin},
        {"all given", QelMidiMessage(MessageType::noteOn, 60, 100, 3, 1, 2, 4, Ticks{7}), "out 1 zone 2 in 4 channel 3",
         "ppq 7 cell -1,-1 host time -1"},
        {"channel above 15 is clamped", QelMidiMessage(MessageType::noteOn, 60, 100, 20, 1, 2, 4, noTicks),
         "out 1 zone 2 in 4 channel 15", noOrigin},
        {"negative channel", QelMidiMessage(MessageType::noteOn, 60, 100, -5, 1, 2, 4, noTicks),
         "out 1 zone 2 in 4 default channel", noOrigin},
        {"of a message", QelMidiMessage(note, 1, 20, 2, Cell{3, 4}), "out 1 zone 2 in -1 channel 20",
         "ppq -1 cell 3,4 host time -1"},
        {"of a message, negative channel", QelMidiMessage(note, 1, -2, 2, Cell()), "out 1 zone 2 in -1 default channel",
         noOrigin},
        {"packed message", QelMidiMessage(note.getWparam()), "out -1 zone -1 in -1 default channel", noOrigin},
        {"all sound off", QelMidiMessage::createAllSoundOffCC(2, 17), "out 2 zone -1 in -1 channel 15", noOrigin},
        {"all controllers off", QelMidiMessage::createAllControllersOffCC(2, -1), "out 2 zone -1 in -1 default channel",
         noOrigin},
        {"system reset", QelMidiMessage::createSystemReset(2), "out 2 zone -1 in -1 channel 0", noOrigin},
        {"soft reset", QelMidiMessage::createQelReset(), "out -1 zone -1 in -1 default channel", noOrigin + " reset"},
        {"hard reset", QelMidiMessage::createQelHardReset(), "out -1 zone -1 in -1 default channel",
         noOrigin + " hard reset"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(routing(row.message), row.routing);
        EXPECT_EQ(origin(row.message), row.origin);
    }
    EXPECT_EQ(rows[7].message.getMidiMessage(), MidiMessage(MessageType::controllerChange, 120, 0, 15));
    EXPECT_EQ(rows[8].message.getMidiMessage(), MidiMessage(MessageType::controllerChange, 121, 0, 0));
    EXPECT_EQ(rows[9].message.getMidiMessage(), MidiMessage(MessageType::systemReset));
    EXPECT_EQ(rows[5].message.getChannel(), 0);
}

TEST(QelMidiMessageTest, ThreadMessageCarriesMessageAndRoutingButNoTimeNorOrigin) {
    RandomCases random;
    for (auto i = 0; i < 2000; ++i) {
        const auto byte = [&] { return random.number<std::int8_t>(-128, 127); };
        QelMidiMessage message(MessageType::keyPressure, byte(), byte(), byte(), byte(), byte(), byte(), Ticks{960});
        message.setDefaultChannel(random.number(0, 1) == 1);
        message.setHostTime(5);
        const QelMidiMessage arrived(message.getWparam(), message.getLparam());
        EXPECT_EQ(arrived.getMidiMessage(), message.getMidiMessage());
        EXPECT_EQ(routing(arrived), routing(message));
        EXPECT_EQ(origin(arrived), noOrigin);
    }
}

TEST(QelMidiMessageTest, CopiesCarryEveryField) {
    QelMidiMessage message(MidiMessage(MessageType::pitchBend, 1, 2, 3), 4, 5, 6, Cell{7, 8});
    message.setPpq(Ticks{9});
    message.setHostTime(std::int64_t{1} << 40);
    const auto copy = message;
    QelMidiMessage assigned = QelMidiMessage::createQelHardReset();
    assigned = message;
    for (const auto* const other : {&copy, static_cast<const QelMidiMessage*>(&assigned)}) {
        EXPECT_EQ(other->getMidiMessage(), message.getMidiMessage());
        EXPECT_EQ(routing(*other), "out 4 zone 6 in -1 channel 5");
        EXPECT_EQ(origin(*other), "ppq 9 cell 7,8 host time 1099511627776");
    }
}

// The small fields lie in the last word of the message inside.
TEST(QelMidiMessageTest, ReplacingTheMessageLeavesTheRoutingAlone) {
    QelMidiMessage message(MessageType::noteOn, 60, 100, -1, 1, 2, 3, Ticks{4});
    message.setMidiMessage(MidiMessage(MessageType::noteOff, -1, -1, 15));
    EXPECT_EQ(routing(message), "out 1 zone 2 in 3 default channel");
    EXPECT_EQ(message.getChannel(), 15);
    message.setChannel(-3);
    EXPECT_EQ(message.getChannel(), 0);
    message.setChannel(12);
    EXPECT_EQ(routing(message), "out 1 zone 2 in 3 channel 12");
}

} // namespace
} // namespace Backend::MidiEngine
