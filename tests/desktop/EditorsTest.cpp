// Whatever a section has can be edited in its panel, one gesture is one edit, and undo takes it back.
#include "core/QelMessageManager.h"
#include "desktop/DesktopRig.h"
#include "desktop/panels/ControlsPanel.h"
#include "desktop/panels/KeysPanel.h"
#include "desktop/panels/LayerStrip.h"
#include "desktop/panels/PanelFrame.h"
#include "desktop/widgets/NumberField.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QPointer>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

using Backend::Oscillators::Oscillator;
using Desktop::NumberField;
using Gui::Panel;

class DesktopEditors : public testing::Test {
protected:
    void SetUp() override {
        rig.after([&] {
            for (std::size_t i = 0; i < Gui::panelCount; ++i) {
                rig.window().showPanel(static_cast<Panel>(i), true);
            }
        });
    }
    std::string pressQ() {
        std::string played = rig.after([&] { QTest::keyPress(&rig.window(), Qt::Key_Q); });
        rig.after([&] { QTest::keyRelease(&rig.window(), Qt::Key_Q); });
        return played;
    }
    // Something of every kind, and what edits it.
    void openEditors() {
        rig.after([&] {
            rig.models().zones.add();
            rig.models().oscillators.add();
        });
        rig.click("Edit the controls");
        rig.click("Edit the control VOL");
        rig.click("Details of layer 1");
        rig.click("Add a message of the axis");
        rig.after([&] { rig.window().keys().edit('Q'); });
        rig.click("Add a message");
    }
    std::string moveVolume(int value) {
        return rig.after([&] { rig.window().controls().instrumentAt({0, 2})->setValueByUser(value); });
    }
    DesktopRig rig;
};

// Controls. ------------------------------------------------------------------------------------------------------

TEST_F(DesktopEditors, AControlSendsAsManyMessagesAsItIsGiven) {
    rig.click("Edit the controls");
    rig.click("Edit the control VOL");
    rig.click("Add a message of the control");
    rig.pick("Message of the control", "Channel Pressure");
    EXPECT_EQ(moveVolume(50), "0 B0 7 50; 0 D0 50");
    rig.set("Channel of the control", 3);
    rig.set("Output of the control", 2);
    EXPECT_EQ(moveVolume(51), "0 B0 7 51; 1 D2 51");
    rig.click("Message earlier of the control");
    EXPECT_EQ(moveVolume(52), "1 D2 52; 0 B0 7 52");
    rig.click("Copy the message of the control");
    rig.pick("Message of the control", "Controller Change");
    rig.set("Number of the control", 11);
    rig.set("Channel of the control", 0);
    rig.set("Output of the control", 0);
    EXPECT_EQ(moveVolume(53), "1 D2 53; 0 B0 11 53; 0 B0 7 53");
    rig.click("Remove the message of the control");
    EXPECT_EQ(moveVolume(54), "1 D2 54; 0 B0 7 54");
    rig.models().edits.setIndex(0);
    EXPECT_EQ(moveVolume(55), "0 B0 7 55");
}

TEST_F(DesktopEditors, ALearnedMessageTakesThePlaceOfTheChosenOne) {
    rig.click("Edit the controls");
    rig.click("Edit the control VOL");
    rig.click("Add a message of the control");
    rig.click("Learn the message");
    rig.backend.afterMidi(0xF8, 0, 0);
    rig.backend.afterMidi(0x80, 40, 0);
    rig.backend.afterMidi(0xE0, 0, 64);
    rig.after([] {});
    EXPECT_EQ(moveVolume(3), "0 B0 7 3; 0 E0 3 0");
}

TEST_F(DesktopEditors, AControlOfAnyShapeCanBeChosenMovedAndRemoved) {
    rig.click("Edit the controls");
    rig.click("Edit the control PAN");
    rig.pick("Shape of the control", "label");
    EXPECT_EQ(rig.window().controls().instrumentAt({2, 3}), nullptr);
    rig.click("Edit the control VOL");
    rig.click("Edit the control PAN");
    rig.pick("Shape of the control", "lying fader");
    ASSERT_NE(rig.window().controls().instrumentAt({2, 3}), nullptr);
    rig.set("Row of the control", 5);
    EXPECT_NE(rig.window().controls().instrumentAt({4, 3}), nullptr);
    rig.set("Column of the control", 1);
    ASSERT_NE(rig.window().controls().instrumentAt({4, 0}), nullptr);
    rig.click("Remove the control");
    EXPECT_EQ(rig.models().controls.map().find({4, 0}), nullptr);
    rig.models().edits.setIndex(0);
    EXPECT_NE(rig.window().controls().instrumentAt({2, 3}), nullptr);
}

TEST_F(DesktopEditors, WhatIsBeyondAFieldStaysUntilThatFieldIsEdited) {
    Backend::Controls::Control wide = *rig.models().controls.map().find({0, 2});
    wide.min = -5;
    wide.size = 12;
    rig.after([&] { rig.models().controls.put("test", wide); });
    rig.click("Edit the controls");
    rig.click("Edit the control VOL");
    rig.set("To of the control", 100);
    const Backend::Controls::Control& now = *rig.models().controls.map().find({0, 2});
    EXPECT_EQ(now.min, -5);
    EXPECT_EQ(now.max, 100);
    EXPECT_EQ(now.size, 12);
}

// Keys and joysticks. --------------------------------------------------------------------------------------------

TEST_F(DesktopEditors, AKeyDoesAsManyThingsAsItIsGiven) {
    rig.after([&] { rig.window().keys().edit('Q'); });
    rig.click("Add a function of the key");
    rig.pick("Function when the key goes down", "Midi Program Change");
    EXPECT_EQ(pressQ(), "0 90 60 100; 0 C0 0");
    rig.click("Function earlier of the key");
    EXPECT_EQ(pressQ(), "0 C0 0; 0 90 60 100");
    rig.set("Program when the key goes down", 5);
    EXPECT_EQ(pressQ(), "0 C0 5; 0 90 60 100") << "the same one is still chosen";
    rig.click("Remove the function of the key");
    EXPECT_EQ(pressQ(), "0 90 60 100");
    rig.undo();
    EXPECT_EQ(pressQ(), "0 C0 5; 0 90 60 100");
    rig.models().edits.setIndex(0);
    EXPECT_EQ(pressQ(), "0 90 60 100");
    rig.click("modifiers count at release");
    EXPECT_TRUE(rig.models().keys.map().useKeyUpMod);
}

TEST_F(DesktopEditors, AnAxisAndAButtonDoAsManyThingsAsTheyAreGiven) {
    rig.click("Add a message of the axis");
    rig.click("Add a message of the axis");
    rig.pick("Message of the axis", "Pitch Bend");
    rig.set("Zone of the axis", 3);
    rig.set("Offset", 7);
    rig.click("Add a function of the button");
    rig.click("Add a function of the button");
    rig.pick("Function when the button goes down", "Midi Program Change");
    const auto& map = rig.models().joysticks.map();
    const auto* const first = map.axes.find({0, 0});
    ASSERT_NE(first, nullptr);
    ASSERT_EQ(first->events.size(), 2U);
    EXPECT_EQ(first->events[0].event.message.getD1(), 1);
    EXPECT_EQ(first->events[1].max, 16383);
    EXPECT_EQ(first->events[1].event.zone, 2);
    EXPECT_EQ(first->events[1].offset, 7);
    ASSERT_EQ(map.buttons.find({0, 0})->entries.size(), 2U);
    EXPECT_NE(map.buttons.find({0, 0})->entries[1].down, nullptr);
    rig.models().edits.setIndex(0);
    EXPECT_TRUE(rig.models().joysticks.map().axes.empty() && rig.models().joysticks.map().buttons.empty());
}

// Oscillators. ---------------------------------------------------------------------------------------------------

struct OscillatorSetting {
    const char* field;
    int shown;
    int stored;
    int (*get)(const Oscillator&);
};

class EachOscillatorSetting : public DesktopEditors, public testing::WithParamInterface<OscillatorSetting> {};

TEST_P(EachOscillatorSetting, IsEditedAndUndone) {
    rig.click("Add an oscillator");
    const auto now = [&] { return GetParam().get(*rig.models().oscillators.list().begin()); };
    const int before = now();
    const QString field = QString("%1 of oscillator 1").arg(GetParam().field);
    if (rig.find<QComboBox>(field) != nullptr) {
        rig.pick(field, rig.named<QComboBox>(field).itemText(GetParam().shown));
    } else {
        rig.set(field, GetParam().shown);
    }
    EXPECT_EQ(now(), GetParam().stored);
    rig.undo();
    EXPECT_EQ(now(), before);
}

INSTANTIATE_TEST_SUITE_P(
    All, EachOscillatorSetting,
    testing::Values(
        OscillatorSetting{"Wave", 3, 3, [](const Oscillator& o) { return static_cast<int>(o.type); }},
        OscillatorSetting{"Kind of speed", 1, 0, [](const Oscillator& o) { return int{o.steppedSpeed}; }},
        OscillatorSetting{"Speed", 0, 30720, [](const Oscillator& o) { return int{o.speed}; }},
        OscillatorSetting{"Speed", 17, 120, [](const Oscillator& o) { return int{o.speed}; }},
        OscillatorSetting{"Period", 333, 333, [](const Oscillator& o) { return int{o.speed}; }},
        OscillatorSetting{"Message", 2, 0xA0,
                          [](const Oscillator& o) { return static_cast<int>(o.midiMessage.getMessageType()); }},
        OscillatorSetting{"Message", 6, 16383, [](const Oscillator& o) { return int{o.max}; }},
        OscillatorSetting{"Controller", 74, 74, [](const Oscillator& o) { return int{o.midiMessage.getD1()}; }},
        OscillatorSetting{"Lower end", 20, 20, [](const Oscillator& o) { return int{o.min}; }},
        OscillatorSetting{"Upper end", 20, 20, [](const Oscillator& o) { return int{o.max}; }},
        OscillatorSetting{"Output", 2, 1, [](const Oscillator& o) { return int{o.output}; }},
        OscillatorSetting{"Channel", 16, 15, [](const Oscillator& o) { return int{o.channel}; }},
        OscillatorSetting{"Zone", 2, 1, [](const Oscillator& o) { return int{o.zone}; }},
        OscillatorSetting{"Value at its end", 64, 64, [](const Oscillator& o) { return int{o.stopValue}; }},
        OscillatorSetting{"Detail", 3, 3, [](const Oscillator& o) { return int{o.detail}; }}),
    [](const auto& param) {
        return QString(param.param.field).remove(' ').toStdString() + std::to_string(param.param.stored);
    });

TEST_F(DesktopEditors, AnOscillatorIsSelectedForWhatActsOnTheSelectedOne) {
    rig.click("Add an oscillator");
    rig.click("Add an oscillator");
    rig.click("Selection of oscillator 2");
    rig.after([] {});
    EXPECT_TRUE(rig.named<QToolButton>("Selection of oscillator 2").isChecked());
    EXPECT_FALSE(rig.named<QToolButton>("Selection of oscillator 1").isChecked());
}

TEST_F(DesktopEditors, ALayerThatAFunctionSelectsForEditingComesIntoView) {
    for (int i = 0; i < 15; ++i) {
        rig.click("Add a layer");
    }
    const auto strips = rig.window().panel(Panel::layer)->findChildren<Desktop::LayerStrip*>();
    ASSERT_EQ(strips.size(), 16);
    const auto isInView = [&](int place) { return !strips[place]->visibleRegion().isEmpty(); };
    for (const int place : {15, 0}) {
        rig.afterCall([place](Backend::QelIF& qel) { qel.editSelectLayer(SelectType::fixed(place)); });
        QApplication::processEvents();
        EXPECT_TRUE(isInView(place)) << place;
        EXPECT_FALSE(isInView(15 - place)) << "the list is too long to be seen as a whole";
    }
}

// Zones and presets. ---------------------------------------------------------------------------------------------

TEST_F(DesktopEditors, AZoneIsGivenAnotherNumberButNotThatOfAnother) {
    rig.click("Add a zone");
    rig.click("Add a zone");
    rig.set("Transposition of zone 2", 7);
    rig.set("Number of zone 2", 9);
    EXPECT_EQ(rig.models().zones.transposeOf(8), 7);
    rig.set("Number of zone 9", 1);
    EXPECT_EQ(rig.models().zones.transposeOf(8), 7);
    EXPECT_EQ(rig.named<NumberField>("Number of zone 9").value(), 9);
    rig.undo();
    EXPECT_EQ(rig.models().zones.transposeOf(1), 7);
}

TEST_F(DesktopEditors, APresetOfIncomingMessagesCanBeTakenBack) {
    auto* const panel = rig.window().panel(Panel::midiInput);
    rig.click("Add a message");
    rig.pick("Translation", "Midi Program Change"); // what only passes a message on is not stored
    rig.after([&] { panel->savePreset("One"); });
    rig.click("Add a message");
    rig.pick("Translation", "Midi Program Change");
    rig.after([&] { panel->loadPreset("One"); });
    EXPECT_EQ(rig.models().midiInput.map().size(), 1U);
    rig.undo();
    EXPECT_EQ(rig.models().midiInput.map().size(), 2U);
    EXPECT_EQ(rig.backend.afterMidi(0x90, 61, 100), "0 C0 61");
}

// Gestures. ------------------------------------------------------------------------------------------------------

class OneGesture : public DesktopEditors, public testing::WithParamInterface<const char*> {};

TEST_P(OneGesture, IsOneEdit) {
    openEditors();
    rig.pick("Translation", "Midi Program Change");
    rig.pick("Program of the translation", "always");
    auto& field = rig.named<NumberField>(GetParam());
    const QPointer<NumberField> isThere(&field);
    const int before = field.value();
    const int edits = rig.models().edits.index();
    const int notches = before == field.range().max ? -1 : 1;
    rig.after([&] { DesktopRig::wheel(field, 2 * notches); }); // what comes back of the first does not set it back
    rig.after([&] { DesktopRig::wheel(field, notches); });
    rig.after([] {});
    ASSERT_TRUE(isThere) << "the field is the same that was turned";
    const int after = field.value();
    EXPECT_NE(after, before);
    EXPECT_EQ(rig.models().edits.index(), edits + 1);
    rig.undo();
    rig.after([] {});
    EXPECT_EQ(rig.named<NumberField>(GetParam()).value(), before);
    rig.after([&] { rig.models().edits.redo(); });
    EXPECT_EQ(rig.named<NumberField>(GetParam()).value(), after);
    rig.after([&] { emit rig.named<NumberField>(GetParam()).letGo(); });
    rig.after([&] { DesktopRig::wheel(rig.named<NumberField>(GetParam()), notches); });
    EXPECT_EQ(rig.models().edits.index(), edits + 2) << "the next one is another";
}

INSTANTIATE_TEST_SUITE_P(All, OneGesture,
                         testing::Values("Tempo", "Transposition of zone 1", "Lowest velocity of layer 1",
                                         "Detail of oscillator 1", "To of the control", "Number of the control",
                                         "Velocity when the key goes down", "To", "Number of the axis",
                                         "Number: Program of the translation"),
                         [](const auto& param) { return QString(param.param).remove(' ').remove(':').toStdString(); });

TEST_F(DesktopEditors, AMenuIsNoPartOfAGesture) {
    rig.after([&] { rig.window().keys().edit('Q'); });
    rig.pick("Zone when the key goes down", "3");
    const int edits = rig.models().edits.index();
    rig.after([&] { rig.named<NumberField>("Velocity when the key goes down").setValueByUser(50); });
    EXPECT_EQ(rig.models().edits.index(), edits + 1);
    rig.undo();
    EXPECT_EQ(rig.named<QComboBox>("Zone when the key goes down").currentText(), "3");
}

TEST_F(DesktopEditors, WhatIsBroughtBackIsNoEdit) {
    auto& tempo = rig.named<NumberField>("Tempo");
    rig.after([&] { tempo.setValueByUser(130); });
    rig.after([&] { tempo.setValueByUser(120); });
    EXPECT_TRUE(rig.models().edits.isClean());
    EXPECT_EQ(rig.models().edits.count(), 0);
}

// The way of an event. -------------------------------------------------------------------------------------------

TEST_F(DesktopEditors, EachEventIsListedWithTheLayerThatSentIt) {
    rig.after([&] {
        rig.models().layers.add();
        auto layers = rig.models().layers.layers();
        layers[0].maxNote = Note(59);
        layers[1].minNote = Note(60);
        layers[1].channel = 0; // as the first one
        rig.models().layers.change("test", 0, layers[0]);
        rig.models().layers.change("test", 1, layers[1]);
    });
    rig.models().events.clear();
    rig.backend.afterMidi(0x90, 50, 100);
    rig.backend.afterMidi(0x90, 70, 100);
    rig.backend.after([](auto& qel) {
        qel.postPlayMidi({Backend::MidiEngine::MessageType::noteOn, 72, 1, 0, 1, -1, -1, Backend::noTicks});
    });
    rig.models().events.stop(); // it has heard all that was sent
    rig.models().events.drain();
    QStringList ways;
    for (const auto& event : rig.models().events.events()) {
        ways << rig.models().events.wayOf(event);
    }
    EXPECT_EQ(ways.join("; ").toStdString(), "In 1 → L:1 → Out 1; In 1 → L:2 → Out 1; here → Out 2");
}

// What explains and reaches everything. --------------------------------------------------------------------------

TEST_F(DesktopEditors, HoveringAnythingExplainsItAndTheKeyboardReachesIt) {
    openEditors();
    std::string silent;
    std::string outOfReach;
    for (QWidget* const each : rig.window().findChildren<QWidget*>()) {
        const bool isPart = qobject_cast<QComboBox*>(each->parentWidget()) != nullptr ||
                            each->objectName().startsWith("qt_") || each->accessibleName().isEmpty();
        const bool isWorked = qobject_cast<QAbstractButton*>(each) != nullptr ||
                              qobject_cast<QComboBox*>(each) != nullptr ||
                              qobject_cast<Desktop::Instrument*>(each) != nullptr;
        if (isPart || !isWorked || !each->isVisibleTo(&rig.window())) {
            continue;
        }
        if (each->statusTip().isEmpty()) {
            silent += each->accessibleName().toStdString() + "\n";
        }
        const bool isForLooking = each->inherits("Desktop::WaveView") || each->inherits("Desktop::JoystickView");
        if (!isForLooking && (each->focusPolicy() & Qt::TabFocus) == 0) {
            outOfReach += each->accessibleName().toStdString() + "\n";
        }
    }
    EXPECT_EQ(silent, "");
    EXPECT_EQ(outOfReach, "");
}

} // namespace
