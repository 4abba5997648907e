#include "values/MidiMessage.h"

#include "support/RandomCases.h"
#include "values/ControllerNames.h"

#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <vector>

namespace Backend::MidiEngine {
namespace {

struct TypeRow {
    int status;
    const char* name;
    int dataBytes;
};

const std::vector<TypeRow> typeRows{
    {0x80, "Note Off", 2},
    {0x90, "Note On", 2},
    {0xA0, "Key Pressure", 2},
    {0xB0, "Controller Change", 2},
    {0xC0, "Program Change", 1},
    {0xD0, "Channel Pressure", 1},
    {0xE0, "Pitch Bend", 2},
    {0xF0, "System Exclusive", 2},
    {0xF2, "Song Position", 2},
    {0xF3, "Song Select", 1},
    {0xF5, "Unofficial Bus Select", 1},
    {0xF6, "Tune Request", 0},
    {0xF7, "End Of Sysex", 0},
    {0xF8, "Timing Tick", 0},
    {0xFA, "Start Song", 0},
    {0xFB, "Continue Song", 0},
    {0xFC, "Stop Song", 0},
    {0xFE, "Active Sensing", 0},
    {0xFF, "System Reset", 0},
};

MessageType typeOf(int status) {
    return static_cast<MessageType>(status);
}

TEST(MidiMessageTest, EveryStatusIsATypeOfItsNameAndSizeOrUnknown) {
    std::set<int> named;
    for (const auto& row : typeRows) {
        SCOPED_TRACE(row.name);
        named.insert(row.status);
        const MidiMessage message{std::string_view(row.name)};
        EXPECT_EQ(message.getMessageType(), typeOf(row.status));
        EXPECT_EQ(message.getEventName(), row.name);
        EXPECT_EQ(message.getMessageSize(), row.dataBytes);
        EXPECT_EQ(message.hasParameters(), row.dataBytes > 0);
        EXPECT_TRUE(message.isValid());
    }
    for (auto status = -1; status <= 0x1FF; ++status) {
        if (named.count(status) == 0) {
            SCOPED_TRACE(status);
            EXPECT_EQ(eventName(typeOf(status)), "Unknown");
            EXPECT_FALSE(isKnown(typeOf(status)));
            EXPECT_EQ(dataByteCount(typeOf(status)), 0);
        }
    }
}

TEST(MidiMessageTest, TextIsReadBackWithTheNumberOnlyWhereItIsWritten) {
    for (const auto& row : typeRows) {
        for (auto d1 = 0; d1 <= 127; ++d1) {
            const MidiMessage written(typeOf(row.status), static_cast<std::int8_t>(d1), 5, 3);
            const MidiMessage read(written.toXmlString());
            const auto numbered = row.status <= 0x90 || row.status == 0xB0;
            EXPECT_EQ(read, MidiMessage(typeOf(row.status), static_cast<std::int8_t>(numbered ? d1 : 0)))
                << written.toXmlString();
        }
    }
}

TEST(MidiMessageTest, TextThatIsNotQuiteAnEvent) {
    struct Row {
        const char* text;
        int status;
        int d1;
    };
    const std::vector<Row> rows{
        {"Controller Change", 0xB0, 0},
        {"controller change,7", 0, 7},
        {"Controller Change ,7", 0, 7},
        {"Controller Change,x", 0xB0, 0},
        {"Pitch Bend,3", 0xE0, 3},
        {"Note On,60,7", 0x90, 60},
        {"Note", 0, 0},
        {"", 0, 0},
        {"Unknown", 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const MidiMessage message{std::string_view(row.text)};
        EXPECT_EQ(message.getMessageType(), typeOf(row.status));
        EXPECT_EQ(message.getD1(), row.d1);
    }
}

TEST(MidiMessageTest, ConstructorsDropTheChannelOfTheStatusAndClampTheOther) {
    struct Row {
        const char* name;
        MidiMessage message;
        int status;
        int channel;
    };
    const std::vector<Row> rows{
        {"channel in the status", MidiMessage(typeOf(0x93), 60, 100, 3), 0x90, 3},
        {"channel above 15", MidiMessage(MessageType::noteOn, 60, 100, 20), 0x90, 15},
        {"negative channel", MidiMessage(MessageType::noteOn, 60, 100, -1), 0x90, 0},
        {"system message", MidiMessage(typeOf(0xF8)), 0xF8, 0},
        {"packed", MidiMessage(std::uint64_t{0x09643C93}), 0x90, 9},
        {"packed system message", MidiMessage(std::uint64_t{0xF3}), 0xF3, 0},
        {"note", MidiMessage(Note(60)), 0x90, 0},
        {"no note", MidiMessage(Note()), 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.message.getMessageType(), typeOf(row.status));
        EXPECT_EQ(row.message.getChannel(), row.channel);
    }
}

TEST(MidiMessageTest, AssigningANoteKeepsTheChannelAndTakesEvenNoNote) {
    MidiMessage message(MessageType::controllerChange, 7, 100, 9);
    message = Note(64);
    EXPECT_EQ(message, MidiMessage(MessageType::noteOn, 64, 0, 9));
    message = Note();
    EXPECT_EQ(message, MidiMessage(MessageType::noteOn, -1, 0, 9));
}

TEST(MidiMessageTest, ShortMessage) {
    struct Row {
        const char* name;
        int status;
        std::int8_t channel;
        std::uint32_t expected;
    };
    const std::vector<Row> rows{
        {"channel message", 0x90, 5, 0x643C95},
        {"song position has no channel", 0xF2, 5, 0x643CF2},
        {"other system messages take it", 0xF3, 5, 0x643CF7},
        {"channel 16 counts as 0", 0x90, 16, 0x643C90},
        {"a negative channel counts as 0", 0x90, -1, 0x643C90},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        MidiMessage message(typeOf(row.status), 60, 100, 0);
        message.setChannel(row.channel);
        EXPECT_EQ(message.getMidiOutShortMsg(), row.expected);
    }
    // Bytes with the high bit set must not run into their neighbours.
    EXPECT_EQ(MidiMessage(MessageType::noteOn, -1, 0, 0).getMidiOutShortMsg(), 0xFF90U);
}

TEST(MidiMessageTest, PackingIsReadBack) {
    RandomCases random;
    for (auto i = 0; i < 2000; ++i) {
        const auto byte = [&] { return random.number<std::int8_t>(-128, 127); };
        const auto& row = typeRows[random.number<std::size_t>(0, typeRows.size() - 1)];
        MidiMessage message(typeOf(row.status), byte(), byte(), 0);
        message.setChannel(byte());
        EXPECT_EQ(message.getWparam() >> 32, 0U);
        EXPECT_EQ(MidiMessage(message.getWparam()), message);
    }
}

TEST(MidiMessageTest, BytesOfAFile) {
    struct Row {
        const char* name;
        std::string bytes;
    };
    const std::vector<Row> rows{{"Note On", {'\x92', 7, 9}}, {"Program Change", {'\xC2', 7}}, {"Start Song", {'\xFA'}}};
    for (const auto& row : rows) {
        MidiMessage message{std::string_view(row.name)};
        message.setD1(7);
        message.setD2(9);
        message.setChannel(row.bytes.size() > 1 ? 2 : 0);
        std::ostringstream out;
        EXPECT_EQ(message.writeBytes(out), static_cast<int>(row.bytes.size())) << row.name;
        EXPECT_EQ(out.str(), row.bytes) << row.name;
    }
}

// Messages that differ in D2 or channel only are in no order, and yet >= both ways.
TEST(MidiMessageTest, OrderLooksAtTypeAndD1AsSignedNumbers) {
    RandomCases random;
    const auto any = [&] {
        return MidiMessage(typeOf(random.number(0, 1) * 0x10 + 0x80), random.number<std::int8_t>(-1, 1),
                           random.number<std::int8_t>(0, 1), random.number<std::int8_t>(0, 1));
    };
    for (auto i = 0; i < 2000; ++i) {
        const auto a = any();
        const auto b = any();
        SCOPED_TRACE(std::to_string(a.getWparam()) + " " + std::to_string(b.getWparam()));
        const auto sameKey = a.getMessageType() == b.getMessageType() && a.getD1() == b.getD1();
        EXPECT_EQ(sameKey, !(a < b) && !(b < a));
        EXPECT_FALSE(a < b && b < a);
        EXPECT_EQ(a >= b, !(a < b));
        EXPECT_EQ(a <= b, a == b || a < b);
        EXPECT_EQ(a != b, !(a == b));
        EXPECT_EQ(a == b, a.getWparam() == b.getWparam());
    }
}

TEST(MidiMessageTest, NamesOnScreen) {
    EXPECT_EQ(MidiMessage("Note On,60").getEventNameWithCcAndNoteDetail(), "Note 60 (C4)");
    EXPECT_EQ(MidiMessage("Note Off,0").getEventNameWithCcAndNoteDetail(), "Note 0 (C-1)");
    EXPECT_EQ(MidiMessage("Controller Change,7").getEventNameWithCcAndNoteDetail(), "Control Change 7: Channel Volume");
    EXPECT_EQ(MidiMessage("Pitch Bend").getEventNameWithCcAndNoteDetail(), "Pitch Bend");
    struct Row {
        int controller;
        const char* name;
    };
    // The ends of the runs that the table makes by counting, and what stands beside them.
    for (const auto& row : std::vector<Row>{{0, "Bank Select (MSB)"},
                                            {3, "Undefined"},
                                            {6, "Data Entry"},
                                            {16, "General Purpose Ctl #1"},
                                            {19, "General Purpose Ctl #4"},
                                            {20, "Undefined"},
                                            {32, "Bank Select (LSB)"},
                                            {38, "Data entry"},
                                            {63, "Undefined"},
                                            {64, "Damper pedal on/off"},
                                            {74, "Sound Ctl 5 (Brightness)"},
                                            {75, "Sound Ctl 6"},
                                            {79, "Sound Ctl 10"},
                                            {80, "General Purpose Ctl #5"},
                                            {83, "General Purpose Ctl #8"},
                                            {84, "Portamento Control"},
                                            {90, "Undefined"},
                                            {91, "Effects 1 Depth"},
                                            {95, "Effects 5 Depth"},
                                            {96, "Data entry +1"},
                                            {101, "RPN MSB"},
                                            {102, "Undefined"},
                                            {119, "Undefined"},
                                            {120, "All Sound Off"},
                                            {127, "Poly mode on"},
                                            {-1, "Undefined"},
                                            {128, "Undefined"}}) {
        EXPECT_EQ(controllerName(row.controller), row.name) << row.controller;
    }
}

} // namespace
} // namespace Backend::MidiEngine
