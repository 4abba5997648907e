// XML as we write it, and as descriptions read and check it.
#include "platform/XmlDocument.h"
#include "support/RandomCases.h"
#include "values/AttributeReading.h"
#include "values/ElementFormat.h"
#include "values/XmlWriter.h"

#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <vector>

namespace {

TEST(XmlWriterTest, LayoutIsAnElementALineAndATabALevel) {
    std::ostringstream out;
    XmlWriter writer(out);
    writer.declaration();
    writer.begin("Layers").attribute("merge", false).attribute("count", std::int8_t{-1});
    writer.begin("Layer").attribute("minNote", Note(61)).attribute("name", "<&>'\"");
    writer.end();
    writer.begin("Layer");
    writer.begin("Arpeggio").attribute("beat", 480);
    writer.end();
    writer.end();
    writer.end();
    EXPECT_EQ(out.str(), "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                         "<Layers merge=\"false\" count=\"-1\">\n"
                         "\t<Layer minNote=\"C#4\" name=\"&lt;&amp;&gt;&apos;&quot;\"/>\n"
                         "\t<Layer>\n"
                         "\t\t<Arpeggio beat=\"480\"/>\n"
                         "\t</Layer>\n"
                         "</Layers>\n");
}

TEST(XmlWriterTest, AnEmptyElementWithContentHasItsEndTagOnALineOfItsOwn) {
    std::ostringstream out;
    XmlWriter writer(out, 2);
    writer.begin("Program").attribute("name", "Empty").content();
    writer.end();
    EXPECT_EQ(out.str(), "\t\t<Program name=\"Empty\">\n\t\t</Program>\n");
}

TEST(XmlWriterTest, AnyTextIsReadBack) {
    RandomCases random;
    const std::vector<std::string> pieces{"<",    ">", "&",  "'", "\"", "&amp;", "]]>",
                                          "<!--", " ", "  ", "a", "ß",  "€",     "𝄞"};
    for (auto i = 0; i < 300; ++i) {
        std::string text;
        for (auto length = random.number(0, 12); length > 0; --length) {
            text += pieces[random.number<std::size_t>(0, pieces.size() - 1)];
        }
        std::ostringstream out;
        XmlWriter writer(out);
        writer.declaration();
        writer.begin("Program").attribute("name", text);
        writer.end();
        const auto read = Platform::parseXml(out.str(), "test");
        ASSERT_TRUE(read) << out.str();
        ASSERT_NE(read.value().attribute("name"), nullptr);
        EXPECT_EQ(*read.value().attribute("name"), text);
    }
}

const ElementFormat& testFormat() {
    using A = AttributeFormat;
    using K = AttributeKind;
    static const ElementFormat format = [] {
        auto clamped = A::integerOf("clamped", "5", 0, 127, "kept in range");
        clamped.clamped = true;
        auto mode = A::wordOf("mode", {"off", "type1", "type2"}, "off", "in whatever case");
        mode.anyCase = true;
        auto select = A::of(K::select, "select", "selected", "which");
        select.words = {"up", "selected"};
        select.minimum = 0;
        auto selectControl = A::of(K::selectControl, "selectControl", "selected", "which control");
        selectControl.words = {"left", "selected"};
        auto step = A::of(K::relativeFixed, "step", "", "a step");
        step.minimum = -127;
        step.maximum = 127;
        return ElementFormat{"Thing",
                             "a thing",
                             {A::booleanOf("on", true, "whether"), A::integerOf("number", "-1", -1, 15, "how many"),
                              clamped, A::wordOf("word", {"edit", "knob"}, "knob", "which"), mode, select,
                              selectControl, step, A::of(K::note, "note", "C4", "a note"),
                              A::of(K::optionalNote, "maybe", "", "a note or none"),
                              A::of(K::pitch, "pitch", "", "a key"), A::of(K::fraction, "fraction", "1_1", "a ratio"),
                              A::of(K::cell, "cell", "-1,-1", "a place"), A::of(K::midiEvent, "event", "", "an event"),
                              A::of(K::key, "key", "", "a key"), A::of(K::text, "text", "none", "free")},
                             {ElementFormat{"Part", "a part", {A::booleanOf("on", true, "whether")}, {}},
                              ElementFormat{"Later", "not looked at", {}, {}, false, true}}};
    }();
    return format;
}

Platform::XmlElement withAttribute(std::string name, std::string value) {
    return {"Thing", 3, {{std::move(name), std::move(value)}}, {}, ""};
}

TEST(ElementFormatTest, ValuesThatPassAndValuesThatDoNot) {
    struct Row {
        const char* attribute;
        std::vector<std::string> good;
        std::vector<std::string> bad;
    };
    for (const auto& row : std::vector<Row>{
             {"on", {"true", "false"}, {"", "True", "1", " true"}},
             {"number", {"-1", "0", "15", "+3"}, {"-2", "16", "", "x", "1x", "99999999999999"}},
             {"clamped", {"0", "127"}, {"128", "-1"}},
             {"word", {"edit", "knob"}, {"Knob", "", "fader"}},
             {"mode", {"off", "Type1", "TYPE2"}, {"type3", ""}},
             {"select", {"up", "selected", "0", "12"}, {"down", "", "-1"}},
             {"selectControl", {"left", "0,3"}, {"up", "3", "", "a,b"}},
             {"step", {"", "+127", "-127", "0"}, {"128", "-128", "x"}},
             {"note", {"C-1", "G9", "F#3"}, {"", "G#9", "60"}},
             {"maybe", {"", "C4"}, {"H4"}},
             {"pitch", {"", "C#", "C#4"}, {"H", "c"}},
             {"fraction", {"1_1", "3_4"}, {"", "3", "3_0", "a_b", "3/4"}},
             {"cell", {"0,1", "-1,-1"}, {"", "1", "1;2"}},
             {"event",
              {"", "Pitch Bend", "Note On,60", "Controller Change,127"}, // the default is always fine
              {"pitch bend", "Note On,C4", "Controller Change,128", "Controller Change,"}},
             {"key", {"", "Shift F1", "A"}, {"shift a", "F99"}},
             {"text", {"", "anything"}, {}},
         }) {
        for (const auto good : {true, false}) {
            for (const auto& value : good ? row.good : row.bad) {
                SCOPED_TRACE(std::string(row.attribute) + "=\"" + value + "\"");
                std::vector<Platform::Fault> faults;
                checkElement(withAttribute(row.attribute, value), testFormat(), "a.prg", faults);
                EXPECT_EQ(faults.size(), good ? 0U : 1U);
                if (!faults.empty()) {
                    EXPECT_EQ(faults[0].file, "a.prg");
                    EXPECT_EQ(faults[0].line, 3);
                    EXPECT_EQ(faults[0].reason.find(std::string(row.attribute) + " of <Thing>: \"" + value + "\""), 0U)
                        << faults[0].reason;
                }
            }
        }
    }
}

TEST(ElementFormatTest, EveryFaultIsFoundWithItsLine) {
    const Platform::XmlElement element{"Thing",
                                       1,
                                       {{"On", "true"}, {"number", "99"}},
                                       {{"Part", 2, {{"on", "maybe"}}, {{"Part", 3, {}, {}, ""}}, ""},
                                        {"Other", 4, {{"on", "maybe"}}, {}, ""},
                                        {"Later", 5, {{"x", "y"}}, {{"Z", 6, {}, {}, "text"}}, "text"}},
                                       "\n\tstray\n"};
    std::vector<Platform::Fault> faults;
    checkElement(element, testFormat(), "a.prg", faults);
    std::string found;
    for (const auto& fault : faults) {
        found += std::to_string(fault.line) + ": " + fault.reason + "\n";
    }
    EXPECT_EQ(found, "1: unknown attribute On of <Thing>\n"
                     "1: number of <Thing>: \"99\" is not in the range -1..15\n"
                     "1: <Thing> holds no text\n"
                     "2: on of <Part>: \"maybe\" is not \"true\" or \"false\"\n"
                     "3: unknown element <Part> in <Part>\n"
                     "4: unknown element <Other> in <Thing>\n");

    faults.clear();
    checkElement({"Part", 7, {}, {}, ""}, testFormat(), "a.prg", faults);
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].reason, "<Part> where <Thing> belongs");
}

TEST(AttributeReadingTest, AbsentAndUnreadableTextGivesTheDefault) {
    const auto& format = testFormat();
    struct Row {
        const char* attribute;
        std::vector<std::string> unreadable;
        std::function<std::string(const Platform::XmlElement&)> read;
        const char* expected;
    };
    const std::vector<Row> rows{
        {"on", {"", "no"}, [&](const auto& e) { return std::to_string(readBoolean(e, format["on"])); }, "1"},
        {"number", {"", "x"}, [&](const auto& e) { return std::to_string(readInteger(e, format["number"])); }, "-1"},
        {"clamped", {"x"}, [&](const auto& e) { return std::to_string(readInteger(e, format["clamped"])); }, "5"},
        {"word", {"", "Edit"}, [&](const auto& e) { return std::to_string(readWord(e, format["word"])); }, "1"},
        {"note", {"", "60"}, [&](const auto& e) { return readNote(e, format["note"]).getName(); }, "C4"},
        {"maybe", {"", "60"}, [&](const auto& e) { return readNote(e, format["maybe"]).getName(); }, ""},
        {"pitch", {"", "H"}, [&](const auto& e) { return readNote(e, format["pitch"]).getName(); }, ""},
        {"step", {"", "x"}, [&](const auto& e) { return readRelativeFixed(e, format["step"]).toXmlString(); }, ""},
        {"fraction",
         {"", "3_0"},
         [&](const auto& e) { return readFraction(e, format["fraction"]).toXmlString(); },
         "1_1"},
        {"cell", {"", "x"}, [&](const auto& e) { return readCell(e, format["cell"]).toXmlString(); }, "-1,-1"},
        {"event", {"", "x"}, [&](const auto& e) { return readMidiEvent(e, format["event"]).toXmlString(); }, "Unknown"},
        {"key", {""}, [&](const auto& e) { return readKey(e, format["key"]).getName(); }, ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.read({"Thing", 1, {}, {}, ""}), row.expected) << row.attribute;
        for (const auto& text : row.unreadable) {
            EXPECT_EQ(row.read(withAttribute(row.attribute, text)), row.expected) << row.attribute << " " << text;
        }
    }
}

TEST(AttributeReadingTest, ReadableText) {
    const auto& format = testFormat();
    EXPECT_FALSE(readBoolean(withAttribute("on", "false"), format["on"]));
    EXPECT_EQ(readInteger(withAttribute("number", "12abc"), format["number"]), 12);
    EXPECT_EQ(readInteger(withAttribute("number", "99"), format["number"]), 99); // out of range, yet as it is
    EXPECT_EQ(readInteger(withAttribute("clamped", "99999999999"), format["clamped"]), 127);
    EXPECT_EQ(readInteger(withAttribute("clamped", "-1"), format["clamped"]), 0);
    EXPECT_EQ(readWord(withAttribute("mode", "TYPE2"), format["mode"]), 2);
    EXPECT_EQ(readNote(withAttribute("pitch", "C#7"), format["pitch"]), Note(1));
    EXPECT_EQ(readNote(withAttribute("maybe", "C#4"), format["maybe"]), Note(61));
    EXPECT_EQ(readRelativeFixed(withAttribute("step", "200"), format["step"]), RelativeFixedValue::fixed(200));
    EXPECT_EQ(readFraction(withAttribute("fraction", "3_4"), format["fraction"]), Fraction(3, 4));
    EXPECT_EQ(readCell(withAttribute("cell", "2"), format["cell"]), (Cell{2, -1}));
    EXPECT_EQ(readMidiEvent(withAttribute("event", "Note On,60"), format["event"]).getD1(), 60);
    EXPECT_EQ(readKey(withAttribute("key", "Foo"), format["key"]).getCode(), Key::UNKNOWN_CODE);
    EXPECT_EQ(readText(withAttribute("text", ""), format["text"]), "");
    EXPECT_EQ(readText(withAttribute("on", "x"), format["text"]), "none");
}

} // namespace
