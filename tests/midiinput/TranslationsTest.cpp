#include "midiinput/Translations.h"

#include "input/HelpTexts.h"
#include "midiinput/TranslationFactory.h"
#include "support/ParsedXml.h"
#include "support/RandomCases.h"
#include "support/RecordingQel.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

using namespace Backend::MidiInput::TranslationManagement;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::QelMidiMessage;
using Platform::XmlElement;
using TestSupport::RecordingQel;

namespace {

std::unique_ptr<Translation> translation(const std::string& xml, const std::string& condition = "Off") {
    auto read = readTranslation("<Translation condition=\"" + condition + "\">" + xml + "</Translation>");
    EXPECT_TRUE(read) << xml;
    return read ? std::move(read.value()) : nullptr;
}

std::string written(const Translation& translation, int depth = 0) {
    std::ostringstream out;
    translation.writeXml(out, depth);
    return out.str();
}

std::string callsFor(Translation& translation, const QelMidiMessage& incoming) {
    RecordingQel qel;
    translation.setQel(&qel);
    translation.execute(incoming);
    translation.setQel(nullptr);
    std::string text;
    for (const std::string& call : qel.takeCalls()) {
        text += (text.empty() ? "" : "; ") + call;
    }
    return text;
}

// A controller with number 7 and value 100 on channel 3 of input 2, at tick 500, 9 of the host.
QelMidiMessage controller() {
    QelMidiMessage message(MessageType::controllerChange, 7, 100, 3, -1, -1, 2, Backend::Ticks{500});
    message.setHostTime(9);
    return message;
}

struct Execution {
    const char* xml;
    const char* calls;
};

// Messages: type, data, channel ("*": the default one), output, zone, input, tick, control, time of the host.
constexpr Execution executions[] = {
    {R"(<DoNothing/>)", ""},
    {R"(<Unchanged channel="-2" d1="D1" d2="D2"/>)", "playMidi(176 7 100 3 -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiNoteOn zone="4" output="1" channel="5" d1="D1 +12" d2="64"/>)", "playMidi(144 19 64 5 1 4 2 500 -1 -1 9)"},
    {R"(<MidiNoteOff d1="60" d2="D2"/>)", "playMidi(128 60 100 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiKeyPressure d1="60" d2="D2 -200"/>)", "playMidi(160 60 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiControllerChange d1="1" d2="D2 +200"/>)", "playMidi(176 1 127 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiProgramChange d1="D2" d2=""/>)", "playMidi(192 100 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiChannelPressure d1="D2" d2=""/>)", "playMidi(208 100 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiPitchBend d1="" d2="D2"/>)", "playMidi(224 0 100 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiSongPosition d1="1" d2="2"/>)", "playMidi(242 1 2 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiSongSelect d1="D1" d2=""/>)", "playMidi(243 7 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiBusSelect d1="D1" d2=""/>)", "playMidi(245 7 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiTuneRequest d1="" d2=""/>)", "playMidi(246 0 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiTimingTick d1="" d2=""/>)", "playMidi(248 0 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiStartSong d1="" d2=""/>)", "playMidi(250 0 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiContinueSong d1="" d2=""/>)", "playMidi(251 0 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiStopSong d1="" d2=""/>)", "playMidi(252 0 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiActiveSensing d1="" d2=""/>)", "playMidi(254 0 0 0* -1 -1 2 500 -1 -1 9)"},
    {R"(<MidiSystemReset output="2" d1="" d2=""/>)", "playMidi(255 0 0 0* 2 -1 2 500 -1 -1 9)"},
    {R"(<ShowComputerInput type="on"/>)", "showComputerInput(on)"},
    {R"(<ShowCc type="on"/>)", "showCc(on)"},
    {R"(<ShowDisplay type="off"/>)", "showDisplay(off)"},
    {R"(<ShowMidiInput type="on"/>)", "showMidiInput(on)"},
    {R"(<ShowJoystickInput type="on"/>)", "showJoystick(on)"},
    {R"(<ShowOscillator type="on"/>)", "showOscillator(on)"},
    {R"(<ShowOutput type="toggle"/>)", "showOutput(toggle)"},
    {R"(<ShowHelp type="on"/>)", "showHelp(on)"},
    {R"(<ShowControl type="on"/>)", "showControl(on)"},
    {R"(<ShowLayer type="on"/>)", "showLayer(on)"},
    {R"(<ShowZone type="on"/>)", "showZone(on)"},
    {R"(<ShowSystem type="toggle"/>)", "toggleSystemPanel()"},
    {R"(<ShowSaveDialog/>)", "showSaveDialog()"},
    {R"(<ShowProgramMenu/>)", "showProgramMenu()"},
    {R"(<ShowDefaultMidiOutMenu/>)", "showDefaultMidiOutputMenu()"},
    {R"(<ResetQel/>)", "resetQel()"},
    {R"(<ChangeMidiThru type="off"/>)", "changeMidiThru(off, true)"},
    {R"(<ChangeGlobalKeyboard type="on"/>)", "changeGlobalKeyboard(on, true)"},
    {R"(<ChangeOscSpeed type="0" value="D2"/>)", "changeOscSpeed(0, 100)"},
    {R"(<ChangeZoneTranspose type="selected" value="D1 -12"/>)", "changeZoneTranspose(selected, -5)"},
    {R"(<ChangeLayerTranspose type="1" value="+1"/>)", "changeLayerTranspose(1, +1)"},
    {R"(<ChangeLayerVelocity type="all" value="D2 +1"/>)", "changeLayerVelocity(all, 101)"},
    {R"(<LoadComputerInputPreset preset="A"/>)", "loadComputerInputPreset(\"A\")"},
    {R"(<LoadMidiInputPreset preset="A"/>)", "loadMidiInputPreset(\"A\")"},
    {R"(<LoadJoystickInputPreset preset="A"/>)", "loadJoystickInputPreset(\"A\")"},
    {R"(<LoadControlPreset preset="A"/>)", "loadControlPreset(\"A\")"},
    {R"(<LoadLayerPreset preset="A"/>)", "loadLayerPreset(\"A\")"},
    {R"(<LoadOscillatorPreset preset="A"/>)", "loadOscillatorPreset(\"A\")"},
    {R"(<ChangeProgram type="D1"/>)", "changeProgram(7)"},
    {R"(<ChangeProgram type="D1 -7"/>)", "changeProgram(0)"},
    {R"(<ChangeProgram type="D1 -8"/>)", ""}, // there is no such program
    {R"(<ChangeProgram type="up"/>)", "changeProgram(up)"},
    {R"(<ChangeDefaultMidiOutput type="D2"/>)", "changeDefaultMidiOutput(100)"},
    {R"(<EditSelectLayer type="down"/>)", "editSelectLayer(down)"},
    {R"(<DataSelectLayer type="3"/>)", "dataSelectLayer(3)"},
    {R"(<SelectZone type="all"/>)", "selectZone(all)"},
    {R"(<DataSelectOscillator type="D1"/>)", "dataSelectOsc(7)"},
    {R"(<ChangeTempo value="D2"/>)", "changeTempo(100, true)"},
    {R"(<ChangeTempo value="+5"/>)", "changeTempo(+5, true)"},
    {R"(<ChangeTempo value="up"/>)", "changeTempo(true)"},
    {R"(<ChangeLayerMute type="D1" value="on"/>)", "changeLayerMute(7, on)"},
    {R"(<ChangeLayerMono type="all" value="off"/>)", "changeLayerMono(all, off)"},
    {R"(<ChangeLayerSolo type="selected" value="toggle"/>)", "changeLayerSolo(selected, toggle)"},
    {R"(<ChangeOscPlaying type="0" value="on"/>)", "changeOscPlaying(0, on)"},
    {R"(<ChangeLayerNoteToggle type="0" value="type2"/>)", "changeLayerNoteToggle(0, type2)"},
    {R"(<ChangeControl type="2,0" value="D2"/>)", "changeControl(2,0, 100)"},
    {R"(<SelectControl type="left"/>)", "selectControl(left)"},
    {R"(<SetWidgetFocus type="2,0"/>)", "setWidgetFocus(2,0)"},
    {R"(<SendControlData type="all"/>)", "sendControlData(all)"},
    {R"(<MoveWindowTranslation x="D1" y="+10"/>)", "moveWindow(7, +10)"},
};

// Every translation acts, is written as it was read, and each of the table is among the rows. Without a facade it does
// nothing; the message that it says it would play is the one that it plays.
TEST(Translations, DoWhatTheirElementSays) {
    std::set<std::string_view> missing;
    for (const auto& action : Backend::Actions::actions) {
        missing.insert(action.translation);
    }
    missing.erase(""); // functions only
    for (const Execution& row : executions) {
        const auto read = translation(row.xml, "D2 gt 63");
        ASSERT_TRUE(read) << row.xml;
        read->execute(controller());
        EXPECT_EQ(callsFor(*read, controller()), row.calls) << row.xml;
        EXPECT_EQ(written(*read, 2), "\t\t" + std::string(row.xml) + "\n");
        const auto message = read->getMidiMessage(controller());
        EXPECT_EQ(message ? "playMidi(" + TestSupport::textOf(*message) + ")" : row.calls, row.calls) << row.xml;
        EXPECT_EQ(read->onlyPlays(), message.has_value() || read->getName() == "DoNothing") << row.xml;
        const auto copy = read->clone();
        EXPECT_EQ(copy->getCondition().toXmlString(), "D2 gt 63");
        EXPECT_EQ(callsFor(*copy, controller()), row.calls) << row.xml;
        EXPECT_EQ(written(*copy), written(*read));
        missing.erase(read->getName());
    }
    EXPECT_TRUE(missing.empty()) << *missing.begin();
}

struct Sending {
    const char* name;
    const char* xml;
    QelMidiMessage incoming;
    const char* message;
};

QelMidiMessage note(int d1, int d2, int channel, bool isDefault = false) {
    QelMidiMessage message(MessageType::noteOn, static_cast<std::int8_t>(d1), static_cast<std::int8_t>(d2),
                           static_cast<std::int8_t>(channel), -1, -1, 0, Backend::noTicks);
    message.setDefaultChannel(isDefault);
    return message;
}

TEST(Translations, MakeTheMessageFromTheIncomingOne) {
    QelMidiMessage toOutput = note(60, 100, 3);
    toOutput.setOutput(2);
    const Sending rows[] = {
        {"velocity above", R"(<MidiNoteOn d1="D1" d2="D2 +200"/>)", note(60, 100, 3), "144 60 127 0* -1 -1 0"},
        {"note below", R"(<MidiNoteOn d1="D1 -20" d2="D2"/>)", note(10, 100, 3), "144 0 100 0* -1 -1 0"},
        {"a step is sent as its number", R"(<MidiNoteOn d1="D1" d2="+5"/>)", note(60, 100, 3), "144 60 5 0* -1 -1 0"},
        {"a negative one as 0", R"(<MidiNoteOn d1="D1" d2="-5"/>)", note(60, 100, 3), "144 60 0 0* -1 -1 0"},
        {"nothing is 0", R"(<MidiNoteOn d1="D1"/>)", note(60, 100, 3), "144 60 0 0* -1 -1 0"},
        {"up is 0", R"(<MidiNoteOn d1="up" d2="selected"/>)", note(60, 100, 3), "144 0 0 0* -1 -1 0"},
        {"unchanged channel", R"(<Unchanged channel="unchanged" d1="D1" d2="D2"/>)", note(60, 100, 3),
         "144 60 100 3 -1 -1 0"},
        {"unchanged default channel", R"(<Unchanged channel="unchanged" d1="D1" d2="D2"/>)", note(60, 100, 3, true),
         "144 60 100 3* -1 -1 0"},
        {"no channel is the default one", R"(<Unchanged d1="D1" d2="D2"/>)", note(60, 100, 3), "144 60 100 0* -1 -1 0"},
        {"default channel", R"(<Unchanged channel=" default " d1="D1" d2="D2"/>)", note(60, 100, 3),
         "144 60 100 0* -1 -1 0"},
        {"channel", R"(<Unchanged channel="15" d1="D1" d2="D2"/>)", note(60, 100, 3, true), "144 60 100 15 -1 -1 0"},
        {"channel that there is not", R"(<Unchanged channel="16" d1="D1" d2="D2"/>)", note(60, 100, 3),
         "144 60 100 0* -1 -1 0"},
        {"its output", R"(<Unchanged d1="D1" d2="D2"/>)", toOutput, "144 60 100 0* 2 -1 0"},
        {"another output", R"(<Unchanged output="1" d1="D1" d2="D2"/>)", toOutput, "144 60 100 0* 1 -1 0"},
        {"output 255 is its own", R"(<Unchanged output="255" d1="D1" d2="D2"/>)", toOutput, "144 60 100 0* 2 -1 0"},
    };
    for (const Sending& row : rows) {
        const auto message = translation(row.xml)->getMidiMessage(row.incoming);
        ASSERT_TRUE(message) << row.name;
        EXPECT_EQ(TestSupport::textOf(*message), std::string(row.message) + " -1 -1 -1 -1") << row.name;
    }
}

struct Reading {
    const char* name;
    const char* xml;
    const char* writtenAs; // without "<" and "/>"
};

TEST(Translations, ReadAnyText) {
    const Reading rows[] = {
        {"channel unchanged", R"(<MidiNoteOn channel="unchanged"/>)", R"(MidiNoteOn channel="-2" d1="" d2="")"},
        {"no channel number", R"(<MidiNoteOn channel="x" d1="" d2=""/>)", R"(MidiNoteOn channel="0" d1="" d2="")"},
        {"ways that are not set", R"(<MidiNoteOn zone="255" output="256" channel="-1"/>)", R"(MidiNoteOn d1="" d2="")"},
        {"absent selection", R"(<SelectZone/>)", R"(SelectZone type="selected")"},
        {"word that is none", R"(<SelectZone type="Up"/>)", R"(SelectZone type="0")"},
        {"absent value", R"(<ChangeTempo/>)", R"(ChangeTempo value="")"},
        {"offset 0", R"(<ChangeTempo value="D1 0"/>)", R"(ChangeTempo value="D1 +0")"},
        {"offset that is none", R"(<ChangeTempo value="D2 x"/>)", R"(ChangeTempo value="D2 +0")"},
        {"more than one blank", R"(<ChangeTempo value="D1  -5 9"/>)", R"(ChangeTempo value="D1 -5")"},
        {"byte in lower case", R"(<ChangeTempo value="d1"/>)", R"(ChangeTempo value="0")"},
        {"third byte", R"(<ChangeTempo value="D3"/>)", R"(ChangeTempo value="0")"},
        {"glued offset", R"(<ChangeTempo value="D1+12"/>)", R"(ChangeTempo value="0")"},
        {"toggle", R"(<ShowHelp type="On"/>)", R"(ShowHelp type="toggle")"},
    };
    for (const Reading& row : rows) {
        const auto read = translation(row.xml);
        ASSERT_TRUE(read) << row.name;
        EXPECT_EQ(written(*read), "<" + std::string(row.writtenAs) + "/>\n") << row.name;
    }
}

TEST(Translations, AreTakenFromTheFirstChild) {
    const auto created = [](const char* xml) {
        const auto translation = createTranslation(TestSupport::parsed(xml));
        return translation ? translation->getName() + " if " + translation->getCondition().toXmlString() : "none";
    };
    EXPECT_EQ(created(R"(<Translation><ResetQel/><ShowHelp/></Translation>)"), "ResetQel if Off");
    EXPECT_EQ(created(R"(<Anything condition="D1 ge 64"><ResetQel/></Anything>)"), "ResetQel if D1 ge 64");
    for (const char* none : {"<Translation/>", "<Translation><resetQel/></Translation>",
                             "<Translation><NoFunction/></Translation>", "<Translation><ProgramChange/></Translation>",
                             "<Translation><MidiEndOfSysEx/></Translation>", "<ResetQel/>"}) {
        EXPECT_EQ(created(none), "none") << none;
        EXPECT_FALSE(readTranslation(none)) << none;
    }
    EXPECT_FALSE(readTranslation("<Translation"));
    EXPECT_FALSE(readTranslation("<Anything><ResetQel/></Anything>"));
    EXPECT_FALSE(createDefaultTranslation(""));
}

TEST(Translations, SayWhatTheyAreTo) {
    const std::map<std::string, int> helpIds = {
        {"DoNothing", 5450},      {"Unchanged", 5451},       {"MidiNoteOn", 5452}, {"MidiTuneRequest", 5461},
        {"MidiTimingTick", 5463}, {"MidiKeyPressure", 5469}, {"ShowSystem", 5297}, {"ShowComputerInput", 5274}};
    for (const auto& [keyword, helpId] : helpIds) {
        EXPECT_EQ(createDefaultTranslation(keyword)->getHelpId(), helpId) << keyword;
        EXPECT_NE(Backend::helpText(helpId), "") << keyword;
    }
    class Names final : public TranslationEnumerator {
    public:
        void addTranslation(std::string_view keyword, std::string_view displayName) override {
            names.emplace(keyword, displayName);
        }
        std::map<std::string, std::string> names;
    } offered;
    enumerateTranslations(offered);
    EXPECT_EQ(offered.names.size(), 64U);
    EXPECT_EQ(offered.names.count(""), 0U);
    EXPECT_EQ(offered.names["DataSelectOscillator"], "Data Select Oscillator");
    for (const auto& [keyword, name] : offered.names) {
        EXPECT_TRUE(createDefaultTranslation(keyword)) << keyword;
        EXPECT_NE(name, "") << keyword;
    }
}

TEST(Translations, AreDefaultOnlyAsUntouchedUnchanged) {
    EXPECT_TRUE(translation(R"(<Unchanged d1="D1" d2="D2"/>)")->isDefault());
    for (const char* other :
         {R"(<Unchanged/>)", R"(<Unchanged zone="0" d1="D1" d2="D2"/>)", R"(<Unchanged output="0" d1="D1" d2="D2"/>)",
          R"(<Unchanged channel="unchanged" d1="D1" d2="D2"/>)", R"(<Unchanged d1="D2" d2="D2"/>)",
          R"(<Unchanged d1="D1 +0" d2="D2"/>)", R"(<DoNothing/>)", R"(<MidiNoteOn d1="D1" d2="D2"/>)"}) {
        EXPECT_FALSE(translation(other)->isDefault()) << other;
    }
}

TEST(Translations, SayWhichEventTheySend) {
    const auto eventOf = [](const char* xml) { return translation(xml)->getMidiEvent(controller()); };
    const auto on = eventOf(R"(<MidiNoteOn zone="1" channel="2" d1="D1 +60"/>)");
    EXPECT_TRUE(on.isNoteOn());
    EXPECT_EQ(on.number, 67);
    EXPECT_EQ(on.channel, 2);
    EXPECT_TRUE(on.isSamePlace(eventOf(R"(<MidiNoteOff zone="1" channel="2" d1="D1 +60"/>)")));
    EXPECT_TRUE(eventOf(R"(<MidiNoteOn d1="D1 +60"/>)").isEmpty()); // it goes to no zone
    EXPECT_EQ(eventOf(R"(<MidiNoteOn d1="D1 +60"/>)").number, 255);
    EXPECT_EQ(eventOf(R"(<Unchanged channel="unchanged" d1="D1"/>)").channel, 3);
    EXPECT_EQ(eventOf(R"(<Unchanged d1="D1"/>)").number, 7);
    EXPECT_TRUE(eventOf("<ShowHelp/>").isEmpty());
}

// Changes what it meets.
class EditingVisitor final : public TranslationSettingsVisitor {
public:
    void visit(DoNothingSettingsType&) override { seen += "nothing "; }
    void visit(ActionSettingsType&) override { seen += "action "; }
    void visit(OnOffToggleSettingsType& settings) override { settings.type = OnOffToggle(OnOffToggle::State::off); }
    void visit(MidiSettingsType& settings) override { settings.d1 = MidiTranslationValue("D2 -1"); }
    void visit(SelectSettingsType& settings) override { settings.type = TranslationSelection(SelectType::fixed(5)); }
    void visit(ChangeBooleanSettingsType& settings) override { settings.type = TranslationSelection("all"); }
    void visit(ChangeNoteToggleSettingsType& settings) override {
        settings.value = NoteToggle(NoteToggle::State::type1);
    }
    void visit(SelectControlSettingsType& settings) override { settings.type = SelectControlType(Cell{1, 2}); }
    void visit(LoadPresetSettingsType& settings) override { settings.preset = "P"; }
    void visit(MoveWindowSettingsType& settings) override { settings.x = MidiTranslationValue("D1"); }
    std::string seen;
};

class NamingVisitor final : public TranslationVisitor {
public:
    using TranslationVisitor::visit;
    void visit(const Translations::Unchanged&) override { seen += "Unchanged "; }
    void visit(const Translations::DataSelectOscillator&) override { seen += "DataSelectOscillator "; }
    std::string seen;
};

TEST(Translations, AreToldApartAndEditedByVisitors) {
    NamingVisitor names;
    EditingVisitor editor;
    const std::pair<const char*, const char*> rows[] = {
        {"DoNothing", "<DoNothing/>\n"},
        {"Unchanged", "<Unchanged d1=\"D2 -1\" d2=\"\"/>\n"},
        {"ResetQel", "<ResetQel/>\n"},
        {"ShowHelp", "<ShowHelp type=\"off\"/>\n"},
        {"DataSelectOscillator", "<DataSelectOscillator type=\"5\"/>\n"},
        {"ChangeLayerMute", "<ChangeLayerMute type=\"all\" value=\"toggle\"/>\n"},
        {"ChangeLayerNoteToggle", "<ChangeLayerNoteToggle type=\"selected\" value=\"type1\"/>\n"},
        {"SelectControl", "<SelectControl type=\"1,2\"/>\n"},
        {"LoadLayerPreset", "<LoadLayerPreset preset=\"P\"/>\n"},
        {"MoveWindowTranslation", "<MoveWindowTranslation x=\"D1\" y=\"\"/>\n"},
    };
    for (const auto& [keyword, edited] : rows) {
        const auto translation = createDefaultTranslation(keyword);
        translation->accept(editor);
        EXPECT_EQ(written(*translation), edited);
        translation->accept(names);
    }
    EXPECT_EQ(editor.seen, "nothing action ");
    EXPECT_EQ(names.seen, "Unchanged DataSelectOscillator ");
}

} // namespace
