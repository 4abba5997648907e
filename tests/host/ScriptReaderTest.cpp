#include "host/PerformanceScript.h"
#include "platform/ThreadServices.h"
#include "support/RandomCases.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace Host;

namespace {

// Writes an event in words of its own.
struct Describe {
    std::ostream& out;
    void operator()(const MidiArrives& m) {
        out << "midi " << int{m.port} << ' ' << int{m.status} << ' ' << int{m.d1} << ' ' << int{m.d2};
    }
    void operator()(const KeyMoves& k) { out << "key " << static_cast<int>(k.press) << " [" << k.name << ']'; }
    void operator()(const ControlMoves& c) { out << "control " << c.cell.x << ' ' << c.cell.y << ' ' << c.value; }
    void operator()(const AxisMoves& a) { out << "axis " << int{a.joystick} << ' ' << int{a.axis} << ' ' << a.raw; }
    void operator()(const ButtonMoves& b) {
        out << "button " << int{b.joystick} << ' ' << int{b.button} << ' ' << static_cast<int>(b.press);
    }
    void operator()(const ExecuteFunction& f) { out << "function [" << f.xml << ']'; }
    void operator()(const ExecuteTranslation& t) {
        out << "translate ";
        (*this)(t.incoming);
        out << " [" << t.xml << ']';
    }
    void operator()(const SetTempo& t) { out << "tempo " << t.beatsPerMinute; }
    void operator()(const ResetAll&) { out << "reset"; }
    void operator()(const EndOfPerformance&) { out << "end"; }
};

std::string read(const std::string& text, int inputs = 2) {
    auto script = PerformanceScript::open(text, "a.script", inputs);
    if (!script) {
        return script.fault().text();
    }
    std::ostringstream list;
    PerformanceEvent event;
    while (script.value()->next(event)) {
        list << event.tick << ' ';
        std::visit(Describe{list}, event.what);
        list << '\n';
    }
    return list.str();
}

struct Row {
    std::string text;
    std::string expected;
};

class Script : public testing::Test {
protected:
    Script() { Platform::initializeThreadServices(); }
    ~Script() override { Platform::uninitializeThreadServices(); }
};

TEST_F(Script, UnderstandsEveryVerb) {
    const Row rows[] = {
        {"0 midi 0 0x90 60 100", "0 midi 0 144 60 100\n"},
        {"0 midi 1 144 0x3c 0X40", "0 midi 1 144 60 64\n"},
        {"5 midi 0 0xC3 7", "5 midi 0 195 7 0\n"},
        {"5 midi 0 0xC3 7 0", "5 midi 0 195 7 0\n"},
        {"5 midi 0 0xF8", "5 midi 0 248 0 0\n"},
        {"5 midi 0 0x90 60", "5 midi 0 144 60 0\n"},
        {"5 midi 0 0x90", "5 midi 0 144 0 0\n"},
        {"0 key down Q\n1 key repeat Q\n2 key up Q", "0 key 0 [Q]\n1 key 1 [Q]\n2 key 2 [Q]\n"},
        {"0 key down Shift F1", "0 key 0 [Shift F1]\n"},
        {"0 key down  Shift Control Alt Win Numpad Enter \t", "0 key 0 [Shift Control Alt Win Numpad Enter]\n"},
        {"0 control 2,13 127", "0 control 2 13 127\n"},
        {"0 control 0,0 -8192", "0 control 0 0 -8192\n"},
        {"0 axis 1 R 65535\n0 axis 0 X 0\n0 axis 0 U 1", "0 axis 1 5 65535\n0 axis 0 0 0\n0 axis 0 3 1\n"},
        {"0 button 0 31 down\n0 button 1 0 up", "0 button 0 31 0\n0 button 1 0 2\n"},
        {"0 function <ResetQel/>", "0 function [<ResetQel/>]\n"},
        {"0 function <MidiNoteOn note=\"C#4\" velocity=\"100\"/>",
         "0 function [<MidiNoteOn note=\"C#4\" velocity=\"100\"/>]\n"},
        {"0 translate 1 0xB0 1 64 <Translation condition=\"D2 gt 0\"><DoNothing/></Translation>",
         "0 translate midi 1 176 1 64 [<Translation condition=\"D2 gt 0\"><DoNothing/></Translation>]\n"},
        {"0 tempo 10\n0 tempo 500", "0 tempo 10\n0 tempo 500\n"},
        {"7 reset\n9 end", "7 reset\n9 end\n"},
        {"2000000000 end", "2000000000 end\n"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(read(row.text), row.expected) << row.text;
    }
}

TEST_F(Script, PassesOverCommentsBlanksAndLineEnds) {
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read("\n\n# only\n   # this\n\t#that"), "");
    EXPECT_EQ(read("\xEF\xBB\xBF# mark\r\n  0\t reset \t # now\r\n\r\n1 end # \xC3\xA4"), "0 reset\n1 end\n");
    EXPECT_EQ(read("0 end\n\n# behind the end\n  "), "0 end\n");
    EXPECT_EQ(read("0 reset#"), "a.script:1: unknown verb \"reset#\"");
}

TEST_F(Script, NamesTheLineAndTheFault) {
    const std::string longLine(longestScriptLine - 2, ' ');
    const Row rows[] = {
        {"x", "1: \"x\" is not a tick"},
        {"-1 reset", "1: a tick lies within 0 and 2000000000, not at -1"},
        {"+1 reset", "1: \"+1\" is not a tick"},
        {"1.5 reset", "1: \"1.5\" is not a tick"},
        {"0x10 reset", "1: \"0x10\" is not a tick"},
        {"2000000001 reset", "1: a tick lies within 0 and 2000000000, not at 2000000001"},
        {"99999999999999999999 reset", "1: a tick lies within 0 and 2000000000, not at 99999999999999999999"},
        {"5", "1: a tick without a verb"},
        {"\n# two\n0 play", "3: unknown verb \"play\""},
        {"0 MIDI 0 0x90", "1: unknown verb \"MIDI\""},
        {"10 reset\n9 reset", "2: tick 9 behind tick 10"},
        {"10 end\n10 reset", "2: a line behind \"end\""},
        {"0 end now", "1: \"now\" is too much"},
        {"0 reset now", "1: \"now\" is too much"},
        {"0 midi", "1: a port is missing"},
        {"0 midi 0", "1: a status is missing"},
        {"0 midi 2 0x90 1 1", "1: there is no input port 2; inputs: 2"},
        {"0 midi -1 0x90 1 1", "1: a port lies within 0 and 127, not at -1"},
        {"0 midi 0 0x7F 1 1", "1: a status lies within 128 and 255, not at 0x7F"},
        {"0 midi 0 0x100 1 1", "1: a status lies within 128 and 255, not at 0x100"},
        {"0 midi 0 0xF4", "1: \"0xF4\" is the status of no message"},
        {"0 midi 0 90 1 1", "1: a status lies within 128 and 255, not at 90"},
        {"0 midi 0 0x90 128 1", "1: a data byte lies within 0 and 127, not at 128"},
        {"0 midi 0 0x90 1 -1", "1: a data byte lies within 0 and 127, not at -1"},
        {"0 midi 0 0x90 1 0x", "1: \"0x\" is not a data byte"},
        {"0 midi 0 0x90 1 0x-1", "1: \"0x-1\" is not a data byte"},
        {"0 midi 0 0x90 C4 1", "1: \"C4\" is not a data byte"},
        {"0 midi 0 0x90 1 2 3", "1: \"3\" is too much"},
        {"0 midi 0 0xC0 1 2", "1: Program Change has one data byte"},
        {"0 midi 0 0xFE 1", "1: Active Sensing has no data bytes"},
        {"0 key", "1: down, repeat or up must stand here"},
        {"0 key press Q", "1: down, repeat or up must stand here, not \"press\""},
        {"0 key down", "1: a key without a name"},
        {"0 key down q", "1: unknown key \"q\""},
        {"0 key down Unknown", "1: unknown key \"Unknown\""},
        {"0 key down Shift", "1: unknown key \"Shift\""},
        {"0 key down Control Shift F1", "1: unknown key \"Control Shift F1\""},
        {"0 control 1 5", "1: a cell is X,Y, not \"1\""},
        {"0 control", "1: a control without a cell"},
        {"0 control 1,a 5", "1: \"a\" is not a coordinate"},
        {"0 control -1,0 5", "1: a coordinate lies within 0 and 2147483647, not at -1"},
        {"0 control 1,1", "1: a value is missing"},
        {"0 axis 2 X 0", "1: a joystick lies within 0 and 1, not at 2"},
        {"0 axis 0 W 0", "1: unknown axis \"W\""},
        {"0 axis 0 X 65536", "1: a position lies within 0 and 65535, not at 65536"},
        {"0 button 0 32 down", "1: a button lies within 0 and 31, not at 32"},
        {"0 button 0 1", "1: down, repeat or up must stand here"},
        {"0 function", "1: an XML element is missing"},
        {"0 translate 0 0x90 1 <Translation/>", "1: \"<Translation/>\" is not a data byte"},
        {"0 tempo", "1: a tempo is missing"},
        {"0 tempo 9", "1: a tempo lies within 10 and 500, not at 9"},
        {"0 tempo 501", "1: a tempo lies within 10 and 500, not at 501"},
        {"0 tempo fast", "1: \"fast\" is not a tempo"},
        {"0 reset\n# \xFF", "2: not UTF-8"},
        {"# \xC0\x80", "1: not UTF-8"},
        {"# \xED\xA0\x80", "1: not UTF-8"},
        {"# \xF4\x90\x80\x80", "1: not UTF-8"},
        {"# \xE2\x82", "1: not UTF-8"},
        {"0 reset\n#" + longLine + "\n1 reset\n#  " + longLine, "4: a line of more than 65536 bytes"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(read(row.text), "a.script:" + row.expected) << row.text.substr(0, 80);
    }
}

// What is wrong with XML is said by its reader, in words that differ between systems.
TEST_F(Script, RefusesXmlThatIsNone) {
    for (const char* text : {"0 function ResetQel", "0 function <A", "0 function <A/><B/>", "0 function <A></B>",
                             "0 translate 0 0x90 1 2 <Translation>"}) {
        EXPECT_EQ(read(text).rfind("a.script:1: not an XML element: ", 0), 0U) << read(text);
    }
}

// Reading again line by line gives what the check has seen, whatever the text is.
TEST_F(Script, SurvivesDamage) {
    RandomCases random;
    const std::string whole = "0 midi 0 0x90 60 100\n10 key down Shift F1\n10 tempo 90 # x\n20 control 1,2 3\n"
                              "30 axis 0 X 1\n30 button 0 1 up\n40 reset\n50 midi 1 0xC0 1\n60 end\n";
    int good = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text = whole;
        for (int damage = random.number(1, 3); damage > 0; --damage) {
            const auto at = random.number<std::size_t>(0, text.size() - 1);
            static constexpr char bytes[] = "0123456789 \n#\tx,-\xC3\r";
            const char byte = bytes[random.number<std::size_t>(0, sizeof bytes - 2)];
            switch (random.number(0, 2)) {
            case 0:
                text[at] = byte;
                break;
            case 1:
                text.erase(at, 1);
                break;
            default:
                text.insert(at, 1, byte);
                break;
            }
        }
        const std::string result = read(text);
        if (result.rfind("a.script:", 0) != 0) {
            ++good;
            EXPECT_LE(std::count(result.begin(), result.end(), '\n'), std::count(text.begin(), text.end(), '\n') + 1);
        }
    }
    EXPECT_GT(good, 100);
}

} // namespace
