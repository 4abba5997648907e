// Incoming MIDI: learned, given something to do by menus and fields, tried out.
#include "desktop/DesktopRig.h"
#include "desktop/panels/TranslationForm.h"
#include "desktop/widgets/ChoiceField.h"
#include "desktop/widgets/NumberField.h"
#include "midiinput/TranslationFactory.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace Backend::MidiInput;
using namespace Backend::MidiInput::TranslationManagement;
using Backend::MidiEngine::MessageType;
using Backend::MidiEngine::MidiMessage;
using Desktop::NumberField;

class DesktopMidiInput : public testing::Test {
protected:
    void SetUp() override {
        rig.after([&] { rig.window().showPanel(Gui::Panel::midiInput, true); });
    }
    void pick(const QString& menu, const QString& item) { rig.pick(menu, item); }
    void set(const QString& field, int value) { rig.set(field, value); }
    void click(const QString& button) { rig.click(button); }
    void undo() { rig.undo(); }
    // A configuration, from its translations as they are stored, becomes the chosen one.
    void configure(const MidiEvent& event, std::initializer_list<std::string> translations) {
        MidiEventConfiguration configuration(event);
        for (const std::string& each : translations) {
            configuration.translations.push_back(std::move(readTranslation(each).value()));
        }
        rig.after([&] { rig.models().midiInput.put("test", configuration); });
    }
    static std::string does(const std::string& xml, const std::string& condition = "Off") {
        return "<Translation condition=\"" + condition + "\">" + xml + "</Translation>";
    }
    // As it is stored, the first of the event.
    std::string stored(const MidiEvent& event) {
        const MidiEventConfiguration* const found = rig.models().midiInput.map().find(event);
        std::ostringstream text;
        if (found != nullptr && !found->translations.empty()) {
            found->translations.front()->writeXml(text, 0);
        }
        return text.str();
    }
    std::string played(int status, int d1, int d2, int input = 0) {
        std::string begun = rig.backend.afterMidi(status, d1, d2, input);
        if ((status & 0xF0) == 0x90) {
            rig.backend.afterMidi(status - 0x10, d1, 64, input);
        }
        return begun;
    }
    QString tried() { return rig.named<QLabel>("What becomes of the message").text(); }

    static MidiEvent anyNote(int note) {
        return {MidiEvent::ANY, MidiEvent::ANY, MidiMessage(MessageType::noteOn, static_cast<std::int8_t>(note))};
    }
    DesktopRig rig;
};

TEST_F(DesktopMidiInput, LearnsTheMessageThatArrivesAndNoOther) {
    auto& first = rig.named<QPushButton>("Learn the first message");
    EXPECT_TRUE(first.isVisible());
    rig.after([&] { first.click(); });
    played(0x91, 60, 100, 1);
    rig.after([] {});
    EXPECT_FALSE(first.isVisible());
    pick("Translation", "Midi Program Change");
    EXPECT_EQ(played(0x91, 60, 100, 1), "0 C0 60");
    EXPECT_EQ(played(0x91, 60, 100, 0), "0 90 60 100") << "another input";
    EXPECT_EQ(played(0x90, 60, 100, 1), "0 90 60 100") << "another channel";
    EXPECT_EQ(played(0x91, 61, 100, 1), "0 90 61 100") << "another key";
    pick("Channel of the message", "any channel");
    set("First byte of the message", 61);
    EXPECT_EQ(played(0x90, 61, 100, 1), "0 C0 61");
    EXPECT_EQ(played(0x91, 60, 100, 1), "0 90 60 100") << "it is of the other key now";
    for (int i = 0; i < 4; ++i) {
        undo();
    }
    EXPECT_EQ(played(0x91, 61, 100, 1), "0 90 61 100");
    EXPECT_TRUE(first.isVisible());
}

// What is offered can be set as a whole, also what is offered one day.
TEST_F(DesktopMidiInput, EveryTranslationHasAFormOfAllItsSettings) {
    struct Kinds final : TranslationEnumerator {
        std::vector<std::string> keywords;
        void addTranslation(std::string_view keyword, std::string_view) override { keywords.emplace_back(keyword); }
    } kinds;
    enumerateTranslations(kinds);
    configure(anyNote(60), {does("<DoNothing/>")});
    auto& list = rig.named<QComboBox>("Translation");
    auto* const form = rig.window().findChild<Desktop::TranslationForm*>();
    for (const std::string& keyword : kinds.keywords) {
        pick("Translation", list.itemText(list.findData(QString::fromStdString(keyword))));
        EXPECT_EQ(form->translation().getName(), keyword);
        const auto sent = form->translation().getMidiMessage({MessageType::noteOn, 60, 100, 0, -1, -1, 0, {}});
        const auto settings = static_cast<int>(translationFormat().child(keyword).attributes.size());
        const int way = sent && sent->getMessageType() < MessageType::systemExclusive ? 3 : 2;
        EXPECT_EQ(form->findChild<QFormLayout*>()->rowCount(),
                  sent ? way + sent->getMidiMessage().getMessageSize() : settings)
            << keyword;
    }
}

// A form that is shown says what is stored, and choosing again what is chosen changes nothing.
TEST_F(DesktopMidiInput, WhatIsShownIsWhatIsStored) {
    for (const std::string xml : {
             R"(<Unchanged channel="-2" d1="D1" d2="D2"/>)",
             R"(<MidiNoteOn zone="3" output="1" channel="5" d1="D1 +12" d2="D2 -20"/>)",
             R"(<MidiNoteOn d1="72" d2="up"/>)",
             R"(<MidiProgramChange zone="40" output="9" d1="D2" d2="D1"/>)",
             R"(<MidiPitchBend d1="0" d2="D1 -128"/>)",
             R"(<ChangeTempo value="+5"/>)",
             R"(<ChangeTempo value="130"/>)",
             R"(<ChangeTempo value=""/>)",
             R"(<ChangeTempo value="D2 +20"/>)",
             R"(<ChangeTempo value="selected"/>)",
             R"(<SelectZone type="all"/>)",
             R"(<SelectZone type="down"/>)",
             R"(<SelectZone type="D1 -60"/>)",
             R"(<ChangeZoneTranspose type="200" value="-12"/>)",
             R"(<ChangeControl type="0,2" value="D2"/>)",
             R"(<ChangeControl type="70,7" value="20000"/>)",
             R"(<ChangeLayerMute type="selected" value="off"/>)",
             R"(<ChangeLayerNoteToggle type="3" value="type2"/>)",
             R"(<LoadLayerPreset preset="Not yet saved"/>)",
             R"(<MoveWindowTranslation x="-10" y="5"/>)",
             R"(<ShowZone type="toggle"/>)",
         }) {
        configure(anyNote(60), {does(xml, "D1 le -100")});
        auto* const form = rig.window().findChild<Desktop::TranslationForm*>();
        for (QComboBox* const menu : form->findChildren<QComboBox*>()) {
            rig.after([&] { emit menu->activated(menu->currentIndex()); });
        }
        for (auto* const field : form->findChildren<Desktop::ChoiceField*>()) {
            rig.after([&] { emit field->chosen(); });
        }
        EXPECT_EQ(stored(anyNote(60)), xml + "\n");
        const auto& now = *rig.models().midiInput.map().find(anyNote(60))->translations.front();
        EXPECT_EQ(now.getCondition().toXmlString(), "D1 le -100");
    }
}

struct Compared {
    const char* name;
    const char* byte;
    const char* comparison;
    int number;
    int velocity;
    bool holds;
};

class ConditionsBy : public DesktopMidiInput, public testing::WithParamInterface<Compared> {};

TEST_P(ConditionsBy, Menus) {
    configure(anyNote(60), {does(R"(<MidiProgramChange d1="7" d2=""/>)")});
    pick("Condition of the translation", GetParam().byte);
    pick("Comparison of the condition", GetParam().comparison);
    set("Number of the condition", GetParam().number);
    EXPECT_EQ(played(0x90, 60, GetParam().velocity), GetParam().holds ? "0 C0 7" : "");
    rig.after([&] { rig.named<NumberField>("Second byte to try").setValueByUser(GetParam().velocity); });
    rig.after([&] { emit rig.named<NumberField>("Second byte to try").letGo(); });
    EXPECT_EQ(tried().contains("Program Change 7"), GetParam().holds) << tried().toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, ConditionsBy,
                         testing::Values(Compared{"AtLeastHolds", "incoming velocity", "≥", 64, 64, true},
                                         Compared{"AtLeastFails", "incoming velocity", "≥", 64, 63, false},
                                         Compared{"BytesHaveASign", "incoming velocity", ">", -1, 1, true},
                                         Compared{"TheLowestNumber", "incoming velocity", "<", -128, 1, false},
                                         Compared{"TheNote", "incoming note", "≠", 60, 64, false},
                                         Compared{"TheSameNote", "incoming note", "=", 60, 64, true}),
                         [](const auto& param) { return std::string(param.param.name); });

TEST_F(DesktopMidiInput, TheTryOutSaysWhichLookUpMatchedAndWhatIsSent) {
    const std::string translation = does(R"(<MidiNoteOn zone="0" output="1" d1="D1 +12" d2="D2 -20"/>)", "D2 ge 64");
    const std::uint8_t any = MidiEvent::ANY;
    const MidiMessage note(MessageType::noteOn, 60);
    EXPECT_TRUE(tried().endsWith("→ goes on: Note On C4, velocity 100, channel of the layer")) << tried().toStdString();
    const std::pair<MidiEvent, const char*> nearer[] = {{{any, any, note}, "any input and channel"},
                                                        {{any, 2, note}, "its channel of any input"},
                                                        {{1, any, note}, "its input on any channel"},
                                                        {{1, 2, note}, "its input and channel"}};
    for (const auto& [event, words] : nearer) {
        configure(event, {translation, does(R"(<ChangeTempo value="D2"/>)", "D1 lt 60")});
        pick("Input to try", rig.models().ports.inputName(1));
        pick("Channel to try", "channel 3");
        EXPECT_TRUE(tried().contains(QString("✓ looked up for %1: found").arg(words))) << tried().toStdString();
    }
    set("Second byte to try", 100);
    EXPECT_TRUE(tried().contains("✓ velocity ≥ 64 with 100 → Note On C5, velocity 80, channel of the layer, zone 1, " +
                                 rig.models().ports.outputName(1)))
        << tried().toStdString();
    EXPECT_TRUE(tried().contains("✗ note < 60 with 60: does not hold")) << tried().toStdString();
    EXPECT_EQ(played(0x92, 60, 100, 1), "1 90 72 80");
    set("Second byte to try", 0);
    EXPECT_TRUE(tried().contains("Note Off C4, velocity 100")) << "as it is handled: " << tried().toStdString();
}

TEST_F(DesktopMidiInput, AMessageTakenAwayLeavesTheMoreGeneralOne) {
    const MidiEvent near{0, 0, MidiMessage(MessageType::noteOn, 60)};
    configure(anyNote(60), {does(R"(<MidiProgramChange d1="1" d2=""/>)")});
    configure(near, {does(R"(<MidiProgramChange d1="2" d2=""/>)")});
    auto& table = rig.named<QTreeWidget>("Incoming messages and what they do");
    ASSERT_EQ(table.topLevelItemCount(), 2);
    rig.after([&] { table.setCurrentItem(table.topLevelItem(1)); });
    EXPECT_EQ(played(0x90, 60, 100), "0 C0 2");
    click("Remove the message");
    EXPECT_EQ(played(0x90, 60, 100), "0 C0 1");
    undo();
    EXPECT_EQ(played(0x90, 60, 100), "0 C0 2");
    rig.after([&] { table.setCurrentItem(table.topLevelItem(1)); });
    pick("Input of the message", "any input");
    pick("Channel of the message", "any channel");
    EXPECT_EQ(rig.models().midiInput.map().size(), 2U) << "there is one for that already: it stays as it was";
    EXPECT_NE(stored(anyNote(60)).find("d1=\"1\""), std::string::npos);
}

TEST_F(DesktopMidiInput, TranslationsAreAddedOrderedAndTakenAway) {
    configure(anyNote(60), {does(R"(<MidiNoteOn d1="72" d2="D2"/>)")});
    click("Copy the translation");
    set("Number: Note of the translation", 76);
    EXPECT_EQ(played(0x90, 60, 100), "0 90 72 100; 0 90 76 100");
    click("Translation earlier");
    EXPECT_EQ(played(0x90, 60, 100), "0 90 76 100; 0 90 72 100");
    set("Number: Note of the translation", 77);
    EXPECT_EQ(played(0x90, 60, 100), "0 90 77 100; 0 90 72 100") << "the same one is still chosen";
    click("Add a translation");
    EXPECT_EQ(played(0x90, 60, 100), "0 90 77 100; 0 90 60 100; 0 90 72 100");
    click("Remove the translation");
    click("Remove the translation");
    EXPECT_EQ(played(0x90, 60, 100), "0 90 77 100");
}

TEST_F(DesktopMidiInput, AGestureIsOneEditAndEndsAtItsLastValue) {
    configure(anyNote(60), {does(R"(<MidiNoteOn d1="72" d2="D2"/>)")});
    auto& note = rig.named<NumberField>("Number: Note of the translation");
    rig.after([&] {
        for (int value = 73; value < 80; ++value) {
            note.setValueByUser(value);
        }
        emit note.letGo();
    });
    rig.after([] {});
    EXPECT_EQ(note.value(), 79) << "what comes back of earlier values does not reach it";
    EXPECT_EQ(played(0x90, 60, 100), "0 90 79 100");
    undo();
    EXPECT_EQ(played(0x90, 60, 100), "0 90 72 100");
}

} // namespace
