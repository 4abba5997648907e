// The section "Oscillators".
#include "generators/OscillatorXml.h"

#include "support/ParsedXml.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace Backend::Oscillators;
using TestSupport::parsed;

OscList read(const std::string& text, OscList list = {}) {
    readOscillators(parsed(text), list);
    return list;
}

std::string written(const OscList& list) {
    std::ostringstream out;
    writeOscillators(out, 0, list);
    return out.str();
}

std::string section(const std::string& line) {
    return "<Oscillators merge=\"false\">\n\t" + line + "\n</Oscillators>\n";
}

TEST(OscillatorXml, ReadsAndWritesEachAttribute) {
    struct Row {
        std::string read;
        std::string written;
    };
    const std::string whole =
        R"(<Oscillator type="saw" speed="960" min="100" max="-20" speedMode="ppq" stopValue="64" detail="1" )"
        R"(midiMessage="Controller Change,1" output="3" channel="9" zone="127"/>)";
    const std::string defaults = R"(<Oscillator type="sin" speed="480" min="0" max="127" speedMode="time" )"
                                 R"(stopValue="-1" detail="10" midiMessage="" output="255" channel="-1" zone="255"/>)";
    const Row rows[] = {
        {whole, whole},
        {"<Oscillator/>", defaults},
        {R"(<Oscillator type="square" speed="x" min="" speedMode="PPQ" midiMessage="Hum" output="-1" zone="-1"/>)",
         defaults},
        {R"(<Control/><oscillator/>)" + whole + "<Oscillators/>", whole},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(written(read("<Oscillators>" + row.read + "</Oscillators>")), section(row.written)) << row.read;
    }
    EXPECT_EQ(read(R"(<Oscillators><Oscillator type="square"/></Oscillators>)").find({0})->type,
              OscillatorType::unknown);
    EXPECT_TRUE(read("<Layers><Oscillator/></Layers>").empty());
}

TEST(OscillatorXml, MergeAppends) {
    const std::string two = "<Oscillators><Oscillator speed='1'/><Oscillator speed='2'/></Oscillators>";
    OscList list = read("<Oscillators merge='true'><Oscillator speed='3'/></Oscillators>", read(two));
    ASSERT_EQ(list.size(), 3U);
    for (std::int32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(list.find({i})->id, i);
        EXPECT_EQ(list.find({i})->speed, i + 1);
    }
    EXPECT_EQ(read(two, list).size(), 2U);
    std::ostringstream some;
    writeOscillators(some, 1, list, {{2}, {7}, {0}});
    const OscList chosen = read(some.str());
    EXPECT_EQ(some.str().find("\t<Oscillators merge=\"true\">\n\t\t<Oscillator "), 0U);
    ASSERT_EQ(chosen.size(), 2U);
    EXPECT_EQ(chosen.find({0})->speed, 3);
    EXPECT_EQ(chosen.find({1})->speed, 1);
}

TEST(OscillatorXml, SaysWhatItDoesNotUnderstand) {
    struct Row {
        const char* oscillator;
        const char* fault; // none: it is right
    };
    const Row rows[] = {
        {R"(<Oscillator type="tri" speedMode="any" midiMessage="" output="255" channel="-1"/>)", nullptr},
        {R"(<Oscillator type="square"/>)", "\"square\" is not one of sin, tri, saw, pulse, random"},
        {R"(<Oscillator speed="0"/>)", "speed"},
        {R"(<Oscillator detail="0"/>)", "detail"},
        {R"(<Oscillator channel="16"/>)", "channel"},
        {R"(<Oscillator midiMessage="Hum"/>)", "midiMessage"},
        {R"(<Oscillator colour="1"/>)", "unknown attribute colour"},
        {R"(<Oscilator/>)", "unknown element <Oscilator>"},
    };
    for (const Row& row : rows) {
        std::vector<Platform::Fault> faults;
        checkElement(parsed("<Oscillators>" + std::string(row.oscillator) + "</Oscillators>"), oscillatorsFormat(),
                     "file", faults);
        EXPECT_EQ(faults.size(), row.fault == nullptr ? 0U : 1U) << row.oscillator;
        if (!faults.empty() && row.fault != nullptr) {
            EXPECT_NE(faults[0].reason.find(row.fault), std::string::npos) << faults[0].reason;
        }
    }
}

TEST(OscillatorXml, RandomListsComeBack) {
    RandomCases random;
    OscList list;
    for (int i = 0; i < 200; ++i) {
        Oscillator oscillator;
        oscillator.type = static_cast<OscillatorType>(random.number(0, 4));
        for (std::int32_t* number :
             {&oscillator.speed, &oscillator.min, &oscillator.max, &oscillator.stopValue, &oscillator.detail}) {
            *number = random.number(-2'147'483'647 - 1, 2'147'483'647);
        }
        oscillator.steppedSpeed = random.number(0, 1) == 1;
        oscillator.midiMessage = Backend::MidiEngine::MidiMessage(Backend::MidiEngine::MessageType::controllerChange,
                                                                  random.number<std::int8_t>(0, 127));
        for (std::int8_t* number : {&oscillator.output, &oscillator.channel, &oscillator.zone}) {
            *number = random.number<std::int8_t>(-128, 127);
        }
        list.append(oscillator);
    }
    const OscList back = read(written(list));
    EXPECT_TRUE(back.hasSameActions(list));
    EXPECT_EQ(written(back), written(list));
}

} // namespace
