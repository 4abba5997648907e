#include "input/Functions.h"

#include "input/FunctionFactory.h"
#include "input/HelpTexts.h"
#include "support/ParsedXml.h"
#include "support/RandomCases.h"
#include "support/RecordingQel.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

using namespace Backend::FunctionManagement;
using Backend::Actions::actions;
using Platform::XmlElement;
using TestSupport::parsed;
using TestSupport::RecordingQel;

namespace {

std::string written(const Function& function, int depth = 0) {
    std::ostringstream out;
    function.writeXml(out, depth);
    return out.str();
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "; ") + line;
    }
    return text;
}

struct Execution {
    const char* xml;
    const char* calls;
};

// Messages: type, data, channel ("*": the default one), output, zone, input, and what is never set here.
constexpr Execution executions[] = {
    {R"(<NoFunction/>)", ""},
    {R"(<ShowSystem type="on"/>)", "showSystemPanel(on)"},
    {R"(<ShowSystem type="toggle"/>)", "toggleSystemPanel()"},
    {R"(<ShowHelp type="off"/>)", "showHelp(off)"},
    {R"(<ShowComputerInput type="on"/>)", "showComputerInput(on)"},
    {R"(<ShowControl type="toggle"/>)", "showControl(toggle)"},
    {R"(<ShowMidiInput type="on"/>)", "showMidiInput(on)"},
    {R"(<ShowDisplay type="on"/>)", "showDisplay(on)"},
    {R"(<ShowOscillator type="on"/>)", "showOscillator(on)"},
    {R"(<ShowJoystick type="on"/>)", "showJoystick(on)"},
    {R"(<ShowOutput type="on"/>)", "showOutput(on)"},
    {R"(<ShowCC type="on"/>)", "showCc(on)"},
    {R"(<ShowLayer type="on"/>)", "showLayer(on)"},
    {R"(<ShowZone type="on"/>)", "showZone(on)"},
    {R"(<MidiNoteOn zone="2" output="1" channel="3" note="C4" velocity="100"/>)",
     "playMidi(144 60 100 3 1 2 -1 -1 -1 -1 -1)"},
    {R"(<MidiNoteOff note="C4" velocity="64"/>)", "playMidi(128 60 64 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiControllerChange controller="7" value="9"/>)", "playMidi(176 7 9 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<ProgramChange program="5"/>)", "playMidi(192 5 0 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiSongSelect songNumber="5"/>)", "playMidi(243 5 0 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiChannelPressure channel="15" pressure="5"/>)", "playMidi(208 5 0 15 -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiPitchBend value="16383"/>)", "playMidi(224 127 127 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiPitchBend value="8192"/>)", "playMidi(224 0 64 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiSongPosition value="129"/>)", "playMidi(242 1 1 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiBusSelect busNumber="5"/>)", "playMidi(245 5 0 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiTuneRequest output="1"/>)", "playMidi(246 0 0 0* 1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiEndOfSysEx/>)", "playMidi(247 0 0 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiTimingTick/>)", "playMidi(248 0 0 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiStartSong/>)", "playMidi(250 0 0 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiContinueSong/>)", "playMidi(251 0 0 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiStopSong/>)", "playMidi(252 0 0 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiActiveSensing/>)", "playMidi(254 0 0 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MidiSystemReset zone="7"/>)", "playMidi(255 0 0 0* -1 7 -1 -1 -1 -1 -1)"},
    {R"(<MidiKeyPressure key="C4" pressure="9"/>)", "playMidi(160 60 9 0* -1 -1 -1 -1 -1 -1 -1)"},
    {R"(<MoveWindow x="+10" y="542"/>)", "moveWindow(+10, 542)"},
    {R"(<LoadComputerInputPreset preset="A"/>)", "loadComputerInputPreset(\"A\")"},
    {R"(<LoadMidiInputPreset preset="A"/>)", "loadMidiInputPreset(\"A\")"},
    {R"(<LoadControlPreset preset="A"/>)", "loadControlPreset(\"A\")"},
    {R"(<LoadJoystickInputPreset preset="A"/>)", "loadJoystickInputPreset(\"A\")"},
    {R"(<LoadLayerPreset preset="A"/>)", "loadLayerPreset(\"A\")"},
    {R"(<LoadOscillatorPreset preset="A"/>)", "loadOscillatorPreset(\"A\")"},
    {R"(<SelectControl type="left"/>)", "selectControl(left)"},
    {R"(<SetWidgetFocus type="2,0"/>)", "setWidgetFocus(2,0)"},
    {R"(<ChangeControl type="selected" value="-1"/>)", "changeControl(selected, -1)"},
    {R"(<ChangeControl type="all" value="64"/>)", "changeControl(all, 64)"},
    {R"(<SendControlData type="all"/>)", "sendControlData(all)"},
    {R"(<ChangeProgram type="up"/>)", "changeProgram(up)"},
    {R"(<ShowProgramMenu/>)", "showProgramMenu()"},
    {R"(<ResetQel/>)", "resetQel()"},
    {R"(<ShowSaveDialog/>)", "showSaveDialog()"},
    {R"(<SelectZone type="7"/>)", "selectZone(7)"},
    {R"(<ChangeZoneTranspose type="selected" value="-12"/>)", "changeZoneTranspose(selected, -12)"},
    {R"(<ChangeDefaultMidiOutput type="down"/>)", "changeDefaultMidiOutput(down)"},
    {R"(<ShowDefaultMidiOutputMenu/>)", "showDefaultMidiOutputMenu()"},
    {R"(<ChangeTempo value="+5"/>)", "changeTempo(+5, true)"},
    {R"(<ChangeMidiThru type="off"/>)", "changeMidiThru(off, true)"},
    {R"(<ChangeGlobalKeyboard type="on"/>)", "changeGlobalKeyboard(on, true)"},
    {R"(<DataSelectLayer type="up"/>)", "dataSelectLayer(up)"},
    {R"(<EditSelectLayer type="down"/>)", "editSelectLayer(down)"},
    {R"(<ChangeLayerTranspose type="1" value="+1"/>)", "changeLayerTranspose(1, +1)"},
    {R"(<ChangeLayerVelocity type="all" value="64"/>)", "changeLayerVelocity(all, 64)"},
    {R"(<ChangeLayerMute type="0" value="on"/>)", "changeLayerMute(0, on)"},
    {R"(<ChangeLayerMono type="0" value="off"/>)", "changeLayerMono(0, off)"},
    {R"(<ChangeLayerSolo type="0" value="toggle"/>)", "changeLayerSolo(0, toggle)"},
    {R"(<ChangeLayerNoteToggle type="0" value="type2"/>)", "changeLayerNoteToggle(0, type2)"},
    {R"(<DataSelectOsc type="up"/>)", "dataSelectOsc(up)"},
    {R"(<ChangeOscPlaying type="0" value="on"/>)", "changeOscPlaying(0, on)"},
    {R"(<ChangeOscSpeed type="0" value="+1"/>)", "changeOscSpeed(0, +1)"},
};

// Every function acts, is written as it was read, and each of the table is among the rows.
TEST(Functions, DoWhatTheirElementSays) {
    std::set<std::string_view> missing;
    for (const auto& action : actions) {
        missing.insert(action.function);
    }
    missing.erase(""); // translations only
    for (const Execution& row : executions) {
        RecordingQel qel;
        const auto function = createFunction(parsed(row.xml), qel);
        ASSERT_TRUE(function) << row.xml;
        function->execute();
        EXPECT_EQ(joined(qel.takeCalls()), row.calls) << row.xml;
        EXPECT_EQ(written(*function, 2), "\t\t" + std::string(row.xml) + "\n");
        missing.erase(function->getName());
    }
    EXPECT_TRUE(missing.empty()) << *missing.begin();
}

struct Reading {
    const char* name;
    const char* xml;
    const char* writtenAs; // without "<" and "/>"
};

constexpr Reading readings[] = {
    {"toggle is what no other word is", R"(<ShowHelp type="On"/>)", R"(ShowHelp type="toggle")"},
    {"absent toggle", R"(<ShowHelp/>)", R"(ShowHelp type="toggle")"},
    {"absent selection", R"(<SelectZone/>)", R"(SelectZone type="selected")"},
    {"unknown selection", R"(<SelectZone type="Up"/>)", R"(SelectZone type="0")"},
    {"index beyond all", R"(<SelectZone type="99999999999"/>)", R"(SelectZone type="2147483647")"},
    {"absent control", R"(<SelectControl/>)", R"(SelectControl type="selected")"},
    {"half a cell", R"(<SelectControl type="3"/>)", R"(SelectControl type="3,-1")"},
    {"no cell", R"(<SelectControl type="x"/>)", R"(SelectControl type="-1,-1")"},
    {"absent value", R"(<ChangeTempo/>)", R"(ChangeTempo value="")"},
    {"value that is none", R"(<ChangeTempo value="fast"/>)", R"(ChangeTempo value="0")"},
    {"empty coordinate", R"(<MoveWindow x="" y=" +5 "/>)", R"(MoveWindow x="" y="+5")"},
    {"toggle mode in capitals", R"(<ChangeLayerNoteToggle value="Type1"/>)",
     R"(ChangeLayerNoteToggle type="selected" value="off")"},
    {"preset with markup", R"(<LoadLayerPreset preset="&lt;&quot;&apos;&amp;"/>)",
     R"(LoadLayerPreset preset="&lt;&quot;&apos;&amp;")"},
    {"absent data", R"(<MidiControllerChange/>)", R"(MidiControllerChange controller="0" value="0")"},
    {"absent bend", R"(<MidiPitchBend/>)", R"(MidiPitchBend value="8192")"},
    {"data above", R"(<MidiControllerChange controller="999" value="128"/>)",
     R"(MidiControllerChange controller="127" value="127")"},
    {"data below", R"(<MidiControllerChange controller="-1" value="-9999999999"/>)",
     R"(MidiControllerChange controller="0" value="0")"},
    {"bend above", R"(<MidiPitchBend value="16384"/>)", R"(MidiPitchBend value="16383")"},
    {"channels", R"(<ProgramChange channel="16" program="0"/>)", R"(ProgramChange channel="15" program="0")"},
    {"negative channel", R"(<ProgramChange channel="-7" program="0"/>)", R"(ProgramChange program="0")"},
    {"channel as a byte that is not set", R"(<ProgramChange channel="255" program="0"/>)",
     R"(ProgramChange program="0")"},
    {"ways that are not set", R"(<ProgramChange zone="255" output="256" program="0"/>)",
     R"(ProgramChange program="0")"},
    {"no channel for system messages", R"(<MidiSongSelect channel="3" songNumber="1"/>)",
     R"(MidiSongSelect songNumber="1")"},
    {"no note", R"(<MidiNoteOn note="H4" velocity="100"/>)", R"(MidiNoteOn note="" velocity="100")"},
    {"note as a number", R"(<MidiKeyPressure key="61" pressure="1"/>)", R"(MidiKeyPressure key="C#4" pressure="1")"},
};

TEST(Functions, ReadAnyText) {
    RecordingQel qel;
    for (const Reading& row : readings) {
        const auto function = createFunction(parsed(row.xml), qel);
        ASSERT_TRUE(function) << row.name;
        EXPECT_EQ(written(*function), "<" + std::string(row.writtenAs) + "/>\n") << row.name;
        function->execute();
    }
}

TEST(Functions, SendNoNoteWithoutOne) {
    RecordingQel qel;
    createDefaultFunction("MidiNoteOn", qel)->execute();
    EXPECT_EQ(joined(qel.takeCalls()), "");
}

TEST(Functions, AreOfOneKindForEachKeyword) {
    RecordingQel qel;
    std::set<std::string_view> keywords;
    std::set<std::string_view> translations;
    std::set<int> helpIds;
    std::set<std::string_view> texts;
    for (const auto& action : actions) {
        EXPECT_TRUE(keywords.insert(action.function).second) << action.function;
        if (!action.function.empty()) {
            const auto function = createDefaultFunction(action.function, qel);
            ASSERT_TRUE(function) << action.function;
            EXPECT_EQ(function->getName(), action.function);
            EXPECT_EQ(function->getHelpId(), action.helpId);
        }
        EXPECT_TRUE(action.translation.empty() || translations.insert(action.translation).second) << action.translation;
        EXPECT_TRUE(helpIds.insert(action.helpId).second) << action.helpId;
        EXPECT_TRUE(texts.insert(Backend::helpText(action.helpId)).second) << action.function;
    }
    EXPECT_FALSE(texts.contains(""));
    for (const char* unknown : {"", "Show", "ShowHelpX", "showhelp", "ShowCc", "MidiProgramChange", "Unchanged"}) {
        EXPECT_FALSE(createDefaultFunction(unknown, qel)) << unknown;
    }
    EXPECT_EQ(Functions::ShowSystem(qel).getHelpId(), 5297);
    EXPECT_EQ(Functions::ShowComputerInput(qel).getHelpId(), 5274);
    EXPECT_EQ(Functions::ShowCc(qel).getName(), "ShowCC");
    EXPECT_EQ(Functions::MidiProgramChange(qel).getName(), "ProgramChange");
}

// Any text at all for one attribute: of its kind where there is one, else nonsense.
std::string randomText(RandomCases& random, const AttributeFormat& format) {
    static const std::vector<std::string> nonsense = {"",    " ",   "-1",  "0",       "3",     "+7",
                                                      "-12", "127", "128", "255",     "16383", "99999999999",
                                                      "2,0", "C4",  "G9",  "x<\"&'>", "type1"};
    const int choice = random.number(0, 2);
    if (choice > 0 && !format.words.empty()) {
        return std::string(format.words[random.number<std::size_t>(0, format.words.size() - 1)]);
    }
    if (choice > 0 && format.kind == AttributeKind::optionalNote) {
        return Note(random.number(0, 127)).getName();
    }
    if (choice > 0 && format.kind == AttributeKind::integer) {
        return std::to_string(random.number(0, std::min(format.maximum, 20000)));
    }
    return nonsense[random.number<std::size_t>(0, nonsense.size() - 1)];
}

// What is written is read as the same function, says so again, and does the same; so does a copy.
TEST(Functions, ComeBackFromXmlAndFromCopies) {
    RandomCases random;
    RecordingQel qel;
    const auto callsOf = [&](const Function& function) {
        function.execute();
        return joined(qel.takeCalls());
    };
    for (int i = 0; i < 3000; ++i) {
        const auto& formats = functionFormats();
        const ElementFormat& format = formats[random.number<std::size_t>(0, formats.size() - 1)];
        XmlElement element;
        element.name = format.name;
        for (const AttributeFormat& attribute : format.attributes) {
            if (random.number(0, 4) > 0) {
                element.attributes.push_back({std::string(attribute.name), randomText(random, attribute)});
            }
        }
        const auto function = createFunction(element, qel);
        const std::string text = written(*function);
        const XmlElement again = parsed(text);
        std::vector<Platform::Fault> faults;
        checkElement(again, format, "test", faults);
        EXPECT_TRUE(faults.empty() || text.find("type=\"-") != std::string::npos) << text << faults.front().text();
        const std::string calls = callsOf(*function);
        for (const auto& copy : {createFunction(again, qel), function->clone()}) {
            ASSERT_TRUE(copy);
            EXPECT_TRUE(copy->equals(*function) && function->equals(*copy)) << text;
            EXPECT_EQ(written(*copy), text);
            EXPECT_EQ(callsOf(*copy), calls) << text;
            EXPECT_EQ(copy->getMidiEvent(), function->getMidiEvent()) << text;
        }
        const auto other = createDefaultFunction(formats[random.number<std::size_t>(0, formats.size() - 1)].name, qel);
        EXPECT_EQ(other->equals(*function), written(*other) == text) << text;
    }
}

TEST(Functions, SayWhatTheySend) {
    RecordingQel qel;
    const auto eventOf = [&](const char* xml) { return createFunction(parsed(xml), qel)->getMidiEvent(); };
    const auto on = eventOf(R"(<MidiNoteOn zone="1" channel="2" note="C4" velocity="1"/>)");
    EXPECT_TRUE(on.isNoteOn());
    EXPECT_TRUE(on.isSamePlace(eventOf(R"(<MidiNoteOff zone="1" channel="2" note="C4" velocity="9"/>)")));
    EXPECT_FALSE(on.isSamePlace(eventOf(R"(<MidiNoteOff zone="2" channel="2" note="C4"/>)")));
    EXPECT_FALSE(on.isSamePlace(eventOf(R"(<MidiNoteOff zone="1" note="C4"/>)")));
    EXPECT_EQ(eventOf(R"(<MidiControllerChange controller="7" value="1"/>)"),
              eventOf(R"(<MidiControllerChange controller="7" value="2"/>)"));
    EXPECT_TRUE(eventOf("<ShowHelp/>").isEmpty());
    EXPECT_FALSE(eventOf("<MidiNoteOn/>").isNoteOn());
}

class NamingVisitor final : public FunctionVisitor {
public:
    using FunctionVisitor::visit;
    void visit(const Functions::ShowHelp&) override { seen += "ShowHelp "; }
    void visit(const Functions::MoveWindowFunction&) override { seen += "MoveWindow "; }
    std::string seen;
};

// Changes what it meets, and says which type it was.
class EditingVisitor final : public FunctionSettingsVisitor {
public:
    void visit(NoFunctionSettingsType&) override { seen = "nothing"; }
    void visit(ActionSettingsType&) override { seen = "action"; }
    void visit(OnOffToggleSettingsType& settings) override { settings.type = OnOffToggle(OnOffToggle::State::off); }
    void visit(MidiSettingsType& settings) override { settings.setValue14(1000); }
    void visit(SelectSettingsType& settings) override { settings.type = SelectType::fixed(5); }
    void visit(ChangeBooleanSettingsType& settings) override { settings.type = SelectType::fixed(6); }
    void visit(ChangeNoteToggleSettingsType& settings) override {
        settings.value = NoteToggle(NoteToggle::State::type1);
    }
    void visit(SelectControlSettingsType& settings) override { settings.type = SelectControlType(Cell{1, 2}); }
    void visit(LoadPresetSettingsType& settings) override { settings.preset = "P"; }
    void visit(MoveWindowSettingsType& settings) override { settings.x = RelativeFixedValue::fixed(7); }
    std::string seen;
};

TEST(Functions, AreToldApartByVisitors) {
    RecordingQel qel;
    NamingVisitor visitor;
    for (const char* keyword : {"ShowHelp", "ShowZone", "MoveWindow"}) {
        createDefaultFunction(keyword, qel)->accept(visitor);
    }
    EXPECT_EQ(visitor.seen, "ShowHelp MoveWindow ");

    const std::map<std::string, std::string> edited = {
        {"ShowHelp", R"(<ShowHelp type="off"/>)"},
        {"MidiPitchBend", R"(<MidiPitchBend value="1000"/>)"},
        {"SelectZone", R"(<SelectZone type="5"/>)"},
        {"ChangeLayerMute", R"(<ChangeLayerMute type="6" value="toggle"/>)"},
        {"ChangeLayerNoteToggle", R"(<ChangeLayerNoteToggle type="selected" value="type1"/>)"},
        {"ChangeControl", R"(<ChangeControl type="1,2" value=""/>)"},
        {"LoadLayerPreset", R"(<LoadLayerPreset preset="P"/>)"},
        {"MoveWindow", R"(<MoveWindow x="7" y=""/>)"},
    };
    EditingVisitor editor;
    for (const auto& [keyword, text] : edited) {
        const auto function = createDefaultFunction(keyword, qel);
        function->getSettings().accept(editor);
        EXPECT_EQ(written(*function), text + "\n");
    }
    createDefaultFunction("NoFunction", qel)->getSettings().accept(editor);
    EXPECT_EQ(editor.seen, "nothing");
    createDefaultFunction("ResetQel", qel)->getSettings().accept(editor);
    EXPECT_EQ(editor.seen, "action");
}

TEST(Functions, AreOfferedButOne) {
    class Names final : public FunctionEnumerator {
    public:
        void addFunction(std::string_view keyword, std::string_view displayName) override {
            names.emplace(keyword, displayName);
        }
        std::map<std::string, std::string> names;
    } offered;
    enumerateFunctions(offered);
    EXPECT_EQ(offered.names.size(), actions.size() - 2); // neither what only translations do
    EXPECT_FALSE(offered.names.contains("MidiEndOfSysEx"));
    EXPECT_EQ(offered.names["ChangeOscPlaying"], "Start/Stop Oscillator");
}

TEST(Functions, ExecuteFromText) {
    RecordingQel qel;
    EXPECT_TRUE(executeFunction(R"(<ChangeTempo value="99"/>)", qel));
    EXPECT_EQ(joined(qel.takeCalls()), "changeTempo(99, true)");
    for (const char* bad : {"", "<ChangeTempo", "<Nothing/>", "<ChangeTempo/><ChangeTempo/>"}) {
        EXPECT_FALSE(executeFunction(bad, qel)) << bad;
    }
    EXPECT_EQ(joined(qel.takeCalls()), "");
}

} // namespace
