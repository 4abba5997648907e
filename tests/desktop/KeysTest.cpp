// The computer keyboard as an instrument: by place, once for each press, and never left hanging.
#include "desktop/DesktopRig.h"
#include "desktop/models/RowScales.h"
#include "desktop/panels/KeysPanel.h"
#include "desktop/panels/SystemBar.h"
#include "desktop/widgets/ComputerKeyboard.h"
#include "desktop/widgets/NumberField.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class DesktopKeys : public testing::Test {
protected:
    // As the system sends it: evdev's number and 8 more on the offscreen platform's system.
    std::string send(QEvent::Type type, int key, quint32 scanCode, bool repeat = false,
                     Qt::KeyboardModifiers modifiers = {}) {
        return rig.after([&] {
            QKeyEvent event(type, key, modifiers, scanCode, 0, 0, {}, repeat);
            QWidget* const receiver =
                QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : &rig.window();
            QApplication::sendEvent(receiver, &event);
        });
    }
    std::string press(int key) {
        return rig.after([&] { QTest::keyPress(&rig.window(), static_cast<Qt::Key>(key)); });
    }
    static quint32 scanCodeOf(char key) {
        quint32 scan = 0;
        while (Desktop::codeOfScanCode(scan) != static_cast<std::uint32_t>(key)) {
            ++scan;
        }
        return scan;
    }
    std::string release(int key) {
        return rig.after([&] { QTest::keyRelease(&rig.window(), static_cast<Qt::Key>(key)); });
    }

    DesktopRig rig;
};

TEST_F(DesktopKeys, QPlaysCWithoutADialogBeforeIt) {
    EXPECT_EQ(press(Qt::Key_Q), "0 90 60 100");
    EXPECT_EQ(release(Qt::Key_Q), "0 80 60 100");
}

TEST_F(DesktopKeys, ARepeatDoesNotStrikeAgain) {
    EXPECT_EQ(press(Qt::Key_Q), "0 90 60 100");
    EXPECT_EQ(send(QEvent::KeyRelease, Qt::Key_Q, 0, true), "");
    EXPECT_EQ(send(QEvent::KeyPress, Qt::Key_Q, 0, true), "");
    EXPECT_EQ(press(Qt::Key_Q), "") << "a second press without a release is a repeat, too";
    EXPECT_EQ(release(Qt::Key_Q), "0 80 60 100");
}

TEST_F(DesktopKeys, AKeyThatWasHeldBeforeWeHadTheKeyboardDoesNotPlay) {
    EXPECT_EQ(send(QEvent::KeyPress, Qt::Key_Q, 0, true), "");
    EXPECT_EQ(release(Qt::Key_Q), "");
}

TEST_F(DesktopKeys, ModifiersChooseTheMappingButReleaseEndsIt) {
    rig.afterCall([](auto& qel) { qel.changeZoneTranspose(SelectType::fixed(0), RelativeFixedValue::fixed(0)); });
    EXPECT_EQ(press(Qt::Key_Q), "0 90 60 100");
    EXPECT_EQ(send(QEvent::KeyRelease, Qt::Key_Q, 0, false, Qt::ShiftModifier), "0 80 60 100");
}

struct Loss {
    const char* name;
    std::function<void(DesktopRig&)> happen;
};

class KeysAreLetGo : public DesktopKeys, public testing::WithParamInterface<Loss> {};

TEST_P(KeysAreLetGo, When) {
    press(Qt::Key_Q);
    EXPECT_EQ(rig.after([&] { GetParam().happen(rig); }), "0 80 60 100");
    EXPECT_EQ(release(Qt::Key_Q), "") << "once only";
}

INSTANTIATE_TEST_SUITE_P(All, KeysAreLetGo,
                         testing::Values(Loss{"TheWindowLosesTheKeyboard",
                                              [](DesktopRig& rig) {
                                                  QEvent event(QEvent::WindowDeactivate);
                                                  QApplication::sendEvent(&rig.window(), &event);
                                              }},
                                         Loss{"AMenuOpens",
                                              [](DesktopRig& rig) {
                                                  QMenu menu(&rig.window());
                                                  menu.addAction("something");
                                                  menu.popup({});
                                              }},
                                         Loss{"ADialogOpens",
                                              [](DesktopRig& rig) {
                                                  QDialog dialog(&rig.window());
                                                  dialog.open();
                                              }},
                                         Loss{"TheWindowIsHidden", [](DesktopRig& rig) { rig.window().hide(); }},
                                         Loss{"ItEnds", [](DesktopRig& rig) { rig.gui->end(); }}),
                         [](const auto& param) { return std::string(param.param.name); });

TEST_F(DesktopKeys, TextFieldsKeepTheirKeys) {
    auto& tempo = rig.named<Desktop::NumberField>("Tempo");
    rig.after([&] { tempo.beginTyping(); });
    auto* const field = tempo.findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(rig.after([&] { QTest::keyClick(field, Qt::Key_2); }), "");
    EXPECT_EQ(field->text(), "2");
    rig.after([&] { QTest::keyClick(field, Qt::Key_0); });
    rig.after([&] { QTest::keyClick(field, Qt::Key_0); });
    rig.after([&] { QTest::keyClick(field, Qt::Key_Return); });
    EXPECT_EQ(rig.models().settings.tempo(), 200);
    EXPECT_EQ(press(Qt::Key_Q), "0 90 60 100")
        << "and gives the keyboard back, which has "
        << (QApplication::focusWidget() == nullptr ? "nobody" : QApplication::focusWidget()->metaObject()->className())
        << (QApplication::activeWindow() == &rig.window() ? "" : " in another window");
}

TEST_F(DesktopKeys, WhereTheFocusCameByTabArrowsWorkTheWidget) {
    auto& tempo = rig.named<Desktop::NumberField>("Tempo");
    rig.after([&] { tempo.setFocus(Qt::TabFocusReason); });
    EXPECT_EQ(rig.after([&] { QTest::keyClick(&tempo, Qt::Key_Up); }), "");
    EXPECT_EQ(rig.models().settings.tempo(), 121);
    EXPECT_EQ(rig.after([&] { QTest::keyPress(&tempo, Qt::Key_Q); }), "0 90 60 100") << "letters go on playing";
    rig.after([&] { QTest::keyRelease(&tempo, Qt::Key_Q); });
    rig.after([&] { QTest::keyClick(&tempo, Qt::Key_Escape); });
    EXPECT_FALSE(tempo.hasFocus());
}

TEST_F(DesktopKeys, TheDrawnKeyboardSaysWhatEachKeySends) {
    auto& keyboard = rig.named<Desktop::ComputerKeyboard>("Computer keyboard");
    rig.after([&] { QTest::mouseClick(&keyboard, Qt::LeftButton, {}, keyboard.rectOf('Q').center().toPoint()); });
    EXPECT_EQ(keyboard.selected(), static_cast<std::uint32_t>('Q'));
    EXPECT_TRUE(keyboard.valueText().contains("Midi Note On C4, velocity 100, zone 1"))
        << keyboard.valueText().toStdString();
}

TEST_F(DesktopKeys, AKeyIsEditedTriedUndoneAndRedone) {
    auto& keyboard = rig.named<Desktop::ComputerKeyboard>("Computer keyboard");
    auto& down = rig.named<QComboBox>("Function when the key goes down");
    rig.after([&] { rig.window().keys().edit('Q'); });
    rig.after([&] {
        down.setCurrentIndex(down.findText("Midi Controller Change"));
        emit down.activated(down.currentIndex());
    });
    auto& number = rig.named<Desktop::NumberField>("Controller when the key goes down");
    rig.after([&] { number.setValueByUser(7); });
    EXPECT_EQ(press(Qt::Key_Q), "0 B0 7 0");
    release(Qt::Key_Q);
    rig.after([&] { rig.models().edits.undo(); });
    rig.after([&] { rig.models().edits.undo(); });
    EXPECT_EQ(press(Qt::Key_Q), "0 90 60 100");
    EXPECT_EQ(release(Qt::Key_Q), "0 80 60 100");
    EXPECT_TRUE(rig.models().edits.isClean());
    rig.after([&] { rig.models().edits.redo(); });
    EXPECT_EQ(press(Qt::Key_Q), "0 B0 0 0");
    EXPECT_EQ(keyboard.selected(), static_cast<std::uint32_t>('Q'));
}

TEST_F(DesktopKeys, OnlyThoseThatAreGlobalPlayFromElsewhere) {
    const auto local = [&](char code, bool global) {
        Backend::ComputerInput::KeyConfiguration key = *rig.models().keys.find(Key(static_cast<std::uint32_t>(code)));
        key.global = global;
        rig.after([&] { rig.models().keys.put("scene", {key}); });
    };
    const auto elsewhere = [&](char code, bool down) {
        return rig.after([&] { rig.gui->keys().globalKey(scanCodeOf(code), down); });
    };
    local('W', false);
    EXPECT_EQ(elsewhere('Q', true), "") << "our window has the keyboard: it comes as an event";
    QWidget* const nothing = nullptr;
    rig.after([&] { QApplication::setActiveWindow(nothing); });
    EXPECT_EQ(elsewhere('Q', true), "0 90 60 100");
    EXPECT_EQ(elsewhere('W', true), "");
    local('Q', false);
    EXPECT_EQ(elsewhere('Q', true), "") << "it repeats";
    EXPECT_EQ(elsewhere('Q', false), "0 80 60 100") << "what it began it ends";
    EXPECT_EQ(elsewhere('W', false), "");
}

TEST_F(DesktopKeys, WhoKnowsEarlierThanTheToolkitThatTheKeyboardHasGoneIsBelieved) {
    const quint32 placeOfQ = scanCodeOf('Q');
    EXPECT_EQ(press(Qt::Key_W), "0 90 62 100");
    EXPECT_EQ(rig.after([&] { rig.gui->keys().keyboardMoved(false); }), "0 80 62 100");
    EXPECT_EQ(rig.after([&] { rig.gui->keys().globalKey(placeOfQ, true); }), "0 90 60 100");
    const auto deactivate = [&] {
        QEvent event(QEvent::WindowDeactivate);
        QApplication::sendEvent(&rig.window(), &event);
    };
    EXPECT_EQ(rig.after(deactivate), "") << "the toolkit has noticed; the key is held in another window";
    EXPECT_EQ(rig.after([&] { rig.gui->keys().globalKey(placeOfQ, false); }), "0 80 60 100");
    rig.gui->keys().keyboardMoved(true);
    EXPECT_EQ(rig.after([&] { rig.gui->keys().globalKey(placeOfQ, true); }), "") << "it comes as an event";
    EXPECT_EQ(press(Qt::Key_W), "0 90 62 100");
    EXPECT_EQ(rig.after(deactivate), "0 80 62 100");
}

TEST_F(DesktopKeys, ARowIsGivenAScale) {
    const auto names = Desktop::scaleNames();
    const auto give = [&](char from, const char* scale, std::optional<Desktop::KeysModel::KeyNote> first) {
        const auto row = Desktop::scaleOnRow(static_cast<std::uint32_t>(from),
                                             static_cast<std::size_t>(names.indexOf(scale)), first, *rig.backend.qel);
        rig.after([&] { rig.models().keys.put("scale", row); });
        return row.size();
    };
    const auto plays = [this](int key) {
        const std::string note = press(key);
        release(key);
        return note;
    };
    EXPECT_EQ(give('A', "major", {}), 11U) << "from A to the apostrophe";
    EXPECT_EQ(plays(Qt::Key_A) + plays(Qt::Key_D) + plays(Qt::Key_Apostrophe), "0 90 60 1000 90 64 1000 90 77 100");
    EXPECT_EQ(plays(Qt::Key_Q), "0 90 60 100") << "another row stays";
    EXPECT_EQ(give('S', "whole tone", Desktop::KeysModel::KeyNote{125, 0}), 2U) << "there is no note beyond 127";
    EXPECT_EQ(plays(Qt::Key_A) + plays(Qt::Key_S), "0 90 60 1000 90 125 100");
    EXPECT_TRUE(Desktop::scaleOnRow(112, 0, {}, *rig.backend.qel).empty()) << "F1 is in no such row";
}

TEST(DesktopScanCodes, AreThoseOfTheSystem) {
    struct Row {
        const char* name;
        quint32 x, windows;
        std::uint32_t code;
    };
    constexpr quint32 extended = 0x100;
    const bool isWindows = Desktop::codeOfScanCode(0x10) == 'Q';
    for (const Row& row :
         {Row{"Q", 24, 0x10, 'Q'}, Row{"right Control", 105, extended | 0x1D, 225},
          Row{"Enter of the numpad", 104, extended | 0x1C, 226}, Row{"left", 113, extended | 0x4B, 37},
          Row{"4 of the numpad", 83, 0x4B, 100}, Row{"Num Lock", 77, extended | 0x45, 144}, Row{"Pause", 127, 0x45, 19},
          Row{"right Shift", 62, extended | 0x36, 161}, Row{"right Shift without the bit", 62, 0x36, 161}}) {
        EXPECT_EQ(Desktop::codeOfScanCode(isWindows ? row.windows : row.x), row.code) << row.name;
    }
}

TEST_F(DesktopKeys, ScanCodesAreTakenByPlace) {
    // The key of Q on a US board, which types A on a French one.
    const quint32 placeOfQ = scanCodeOf('Q');
    EXPECT_EQ(send(QEvent::KeyPress, Qt::Key_A, placeOfQ), "0 90 60 100");
    EXPECT_EQ(send(QEvent::KeyRelease, Qt::Key_A, placeOfQ), "0 80 60 100");
}

} // namespace
