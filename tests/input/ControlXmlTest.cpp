#include "input/ControlXml.h"

#include "input/ControlDefaults.h"
#include "platform/XmlDocument.h"
#include "support/ParsedXml.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace Backend;
using namespace Backend::Controls;

ControlMap read(const std::string& xml, ControlMap map = {}) {
    readControls(TestSupport::parsed(xml), map);
    return map;
}

std::string written(const ControlMap& map) {
    std::ostringstream out;
    writeControls(out, 0, map);
    return out.str();
}

// The one control of a section, written again, without what surrounds it.
std::string rewritten(const std::string& control) {
    const std::string text = written(read("<Controls>" + control + "</Controls>"));
    const std::string begin = "<Controls merge=\"false\">\n\t";
    const std::string end = "\n</Controls>\n";
    return text.size() < begin.size() + end.size() ? text
                                                   : text.substr(begin.size(), text.size() - begin.size() - end.size());
}

TEST(ControlXml, MeetsWhatIsMissingOrAbsurdWithDefaults) {
    const std::string end = "</Control>";
    struct Row {
        std::string control;
        std::string written;
    };
    const Row rows[] = {
        {"<Control/>", R"(<Control cell="-1,-1" name="" type="" value="0" min="0" max="127" release="-1" )"
                       R"(autoSend="false" size="1">)"},
        {R"(<Control cell="1" type="Knob" value="x" min="" release="y" autoSend="1" size="0"/>)",
         R"(<Control cell="1,-1" name="" type="" value="0" min="0" max="127" release="-1" autoSend="false" size="1">)"},
        {R"(<Control cell="2,3" name="&lt;&quot;&amp;" type=" knob " value="500" min="9" max="-9" release="8192" )"
         R"(autoSend="true" size="3" color="red"/>)",
         R"(<Control cell="2,3" name="&lt;&quot;&amp;" type="knob" value="500" min="9" max="-9" release="8192" )"
         R"(autoSend="true" size="3">)"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(rewritten(row.control), row.written + "\n\t" + end);
    }
    const Row events[] = {
        {"<Function/>", R"(<Function midiEvent="" output="-1" channel="-1" zone="-1"/>)"},
        {R"(<Function midiEvent="nonsense,7" output="500" channel="-7" zone="x"/>)",
         R"(<Function midiEvent="" output="127" channel="-1" zone="-1"/>)"},
        {R"(<Function midiEvent="Controller Change,7" output="1" channel="15" zone="2"/>)",
         R"(<Function midiEvent="Controller Change,7" output="1" channel="15" zone="2"/>)"},
        {R"(<Function midiEvent="Controller Change,200"/>)",
         R"(<Function midiEvent="" output="-1" channel="-1" zone="-1"/>)"},
        {R"(<Function midiEvent="Key Pressure,60"/>)",
         R"(<Function midiEvent="Key Pressure,60" output="-1" channel="-1" zone="-1"/>)"},
        {R"(<Function midiEvent="Program Change,5"/>)",
         R"(<Function midiEvent="Program Change" output="-1" channel="-1" zone="-1"/>)"},
        {"<Other/>", ""},
    };
    const std::string begin = rewritten("<Control/>").substr(0, rewritten("<Control/>").size() - end.size() - 1);
    for (const Row& row : events) {
        EXPECT_EQ(rewritten("<Control>" + row.control + "</Control>"),
                  begin + (row.written.empty() ? "" : "\t\t" + row.written + "\n") + "\t" + end);
    }
}

TEST(ControlXml, MergesAsTold) {
    const std::string one = R"(<Control cell="0,1" name="new"/>)";
    struct Row {
        const char* attributes;
        std::size_t count;
    };
    for (const Row& row : {Row{"", 1}, Row{"merge=\"false\"", 1}, Row{"merge=\"true\"", 13}, Row{"merge=\"x\"", 1}}) {
        const ControlMap map =
            read(std::string("<Controls ") + row.attributes + ">" + one + "</Controls>", defaultControls());
        EXPECT_EQ(map.size(), row.count) << row.attributes;
        EXPECT_EQ(map.find({0, 1})->name, "new");
        EXPECT_TRUE(map.find({0, 1})->events.empty());
    }
    EXPECT_EQ(read("<Other>" + one + "</Other>", defaultControls()).size(), 13U);
    EXPECT_EQ(read("<Controls>" + one + one + "<Key/></Controls>").size(), 1U);
}

// Whatever a section holds, what is written of it reads back as the same and is written the same again.
TEST(ControlXml, ReadsWhatItWrites) {
    RandomCases random;
    const char* const events[] = {"Note On,60",    "Key Pressure,1", "Controller Change,32", "Pitch Bend",
                                  "Song Position", "Start Song",     "Program Change"};
    for (int round = 0; round < 100; ++round) {
        ControlMap map;
        for (int i = random.number(0, 12); i > 0; --i) {
            Control control{{random.number(-1, 9), random.number(-1, 9)}};
            control.name = random.number(0, 1) == 0 ? "" : "a<b>\"c\" & 'd'";
            control.type = ControlType(static_cast<ControlType::Kind>(random.number(0, 5)));
            for (std::int32_t* number : {&control.value, &control.min, &control.max, &control.release}) {
                *number = random.number(-20'000, 20'000);
            }
            control.autoSend = random.number(0, 1) == 0;
            control.size = random.number(1, 16);
            for (int event = random.number(0, 3); event > 0; --event) {
                const std::string_view text = events[random.number<std::size_t>(0, std::size(events) - 1)];
                control.events.push_back({MidiEngine::MidiMessage(text),
                                          static_cast<std::int8_t>(random.number(-1, 127)),
                                          static_cast<std::int8_t>(random.number(-1, 15)),
                                          static_cast<std::int8_t>(random.number(-1, 127))});
            }
            map.store(control.cell, control);
        }
        const std::string text = written(map);
        const ControlMap again = read(text);
        EXPECT_TRUE(again.hasSameActions(map)) << text;
        EXPECT_EQ(written(again), text);
    }
}

TEST(ControlXml, TheBuiltInControlsAreWellFormedAndThirteen) {
    EXPECT_EQ(defaultControls().size(), 13U);
    const std::string text = written(defaultControls());
    EXPECT_EQ(written(read(text)), text);
    const auto element = Platform::parseXml(text, "built in");
    std::vector<Platform::Fault> faults;
    checkElement(element.value(), controlsFormat(), "built in", faults);
    EXPECT_TRUE(faults.empty()) << faults.front().text();
    EXPECT_NE(text.find(R"(<Control cell="0,0" name="PB" type="vfader" value="8192" min="0" max="16383" )"
                        R"(release="8192" autoSend="false" size="2">)"
                        "\n\t\t"
                        R"(<Function midiEvent="Pitch Bend" output="-1" channel="-1" zone="-1"/>)"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find(R"(cell="2,3" name="PAN" type="knob" value="64" min="0" max="127" release="64")"),
              std::string::npos);
}

TEST(ControlXml, WritesAChosenFewToBeMerged) {
    std::ostringstream out;
    writeControls(out, 0, defaultControls(), {{2, 3}, {9, 9}});
    ControlMap map = read(out.str(), defaultControls());
    EXPECT_EQ(map.size(), 13U);
    map = read(out.str());
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(map.find({2, 3})->name, "PAN");
}

} // namespace
