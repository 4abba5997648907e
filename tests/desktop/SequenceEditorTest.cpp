// What a layer makes of held notes: edited in its strip, heard while edited.
#include "desktop/DesktopRig.h"
#include "desktop/widgets/NumberField.h"
#include "desktop/widgets/StepGrid.h"
#include "generators/SequenceText.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

using Backend::SequenceManagement::textOf;

class DesktopSequences : public testing::Test {
protected:
    void SetUp() override {
        rig.after([&] { rig.window().showPanel(Gui::Panel::layer, true); });
        rig.after([&] { rig.named<QToolButton>("Details of layer 1").click(); });
        rig.after([&] { rig.named<QPushButton>("New sequence of layer 1").click(); });
    }
    Desktop::StepGrid& grid() { return rig.named<Desktop::StepGrid>("Steps of layer 1"); }
    void steps(int count) {
        rig.after([&] {
            auto& field = rig.named<Desktop::NumberField>("Number of steps of layer 1");
            field.setValue(count);
            emit field.letGo();
        });
    }
    // As somebody does who came to the widget by Tab: else the key plays.
    void press(QWidget& widget, Qt::Key key) {
        rig.after([&] {
            widget.setFocus(Qt::TabFocusReason);
            QTest::keyClick(&widget, key);
        });
    }
    void press(Qt::Key key) { press(grid(), key); }
    void click(int step, int offset) {
        const QPoint at = grid().rectOf(step, offset).center().toPoint();
        rig.after([&] { QTest::mouseClick(&grid(), Qt::LeftButton, {}, at); });
    }
    std::string stored() { return textOf(rig.models().sequences.sequence("Sequence 1")); }
    std::string played(int note) {
        std::string begun = rig.backend.afterMidi(0x90, note, 100);
        rig.backend.afterMidi(0x80, note, 64);
        return begun;
    }
    DesktopRig rig;
};

TEST_F(DesktopSequences, ANewOneBelongsToTheLayerAndPlaysWhileItIsEdited) {
    EXPECT_EQ(stored(), "0,0,0,0,0,0,0,0");
    ASSERT_TRUE(rig.models().layers.layers().at(0).sequence);
    EXPECT_EQ(rig.models().layers.layers().at(0).sequence->preset, "Sequence 1");
    steps(1);
    EXPECT_EQ(played(60), "0 90 60 100");
    click(0, 7);
    EXPECT_EQ(stored(), "0|7");
    EXPECT_EQ(played(60), "0 90 60 100; 0 90 67 100");
    rig.after([&] { rig.models().edits.undo(); });
    EXPECT_EQ(played(60), "0 90 60 100");
    rig.after([&] { rig.models().edits.redo(); });
    EXPECT_EQ(played(60), "0 90 60 100; 0 90 67 100");
    rig.after([&] { rig.named<QPushButton>("Notes of the sequence of layer 1").click(); });
    EXPECT_FALSE(rig.models().layers.layers().at(0).sequence->useNote);
}

TEST_F(DesktopSequences, StepsAreMadeByMouse) {
    steps(3);
    click(1, 5);
    EXPECT_EQ(stored(), "0,0|5,0");
    click(1, 5); // the chosen one
    EXPECT_EQ(stored(), "0,0,0");
    click(2, 0); // another: chosen
    EXPECT_EQ(stored(), "0,0,0");
    click(2, 0);
    EXPECT_EQ(stored(), "0,0,-");
    rig.after([&] {
        QTest::mousePress(&grid(), Qt::LeftButton, {}, grid().rectOf(0, 0).center().toPoint());
        QTest::mouseMove(&grid(), grid().rectOf(0, -4).center().toPoint());
        QTest::mouseMove(&grid(), grid().rectOf(0, -5).center().toPoint());
        QTest::mouseRelease(&grid(), Qt::LeftButton, {}, grid().rectOf(0, -5).center().toPoint());
    });
    EXPECT_EQ(stored(), "-5,0,-");
    rig.after([&] { rig.models().edits.undo(); });
    EXPECT_EQ(stored(), "0,0,-") << "a drag is one edit";
}

TEST_F(DesktopSequences, ATurnOfTheWheelIsOneEdit) {
    steps(2);
    rig.after([&] {
        DesktopRig::wheel(grid(), -3);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&grid(), &leave);
    });
    EXPECT_EQ(stored(), "0 V-15,0");
    rig.after([&] { DesktopRig::wheel(grid(), 1); });
    EXPECT_EQ(stored(), "0 V-15,0") << "the wheel is still being turned";
    press(Qt::Key_Delete); // an edit of its own
    EXPECT_EQ(stored(), "-,0");
    rig.undo();
    EXPECT_EQ(stored(), "0 V-10,0");
    rig.undo();
    EXPECT_EQ(stored(), "0 V-15,0");
    rig.undo();
    EXPECT_EQ(stored(), "0,0");
}

TEST_F(DesktopSequences, StepsAreMadeByKeys) {
    steps(2);
    press(Qt::Key_Right);
    press(Qt::Key_PageUp);
    press(Qt::Key_Space);
    EXPECT_EQ(stored(), "0,0|12");
    EXPECT_EQ(grid().valueText().toStdString(), "step 2 of 2, +12 semitones, velocity 0, 1920 ticks");
    rig.after([&] { grid().setVelocity(-10); });
    rig.after([&] { grid().setLength(240); });
    EXPECT_EQ(stored(), "0,0|12 V-10 L240");
    press(Qt::Key_Home);
    press(Qt::Key_Delete);
    EXPECT_EQ(stored(), "-,0|12 V-10 L240");
    rig.after([&] { rig.named<QPushButton>("Rest in the sequence of layer 1").click(); });
    EXPECT_EQ(stored(), "12,0|12 V-10 L240") << "a rest gets the note at the place";
}

TEST_F(DesktopSequences, AnArpeggioIsChosen) {
    auto& kind = rig.named<QComboBox>("Arpeggio of layer 1");
    for (int i = 0; i < 2; ++i) {
        press(kind, Qt::Key_Down);
    }
    press(rig.named<QComboBox>("Arpeggio beat of layer 1"), Qt::Key_Down);
    const auto& arpeggio = rig.models().layers.layers().at(0).arpeggio;
    ASSERT_TRUE(arpeggio);
    EXPECT_EQ(arpeggio->summary(), "Up Arp 1/8 Dotted Len:1/4");
    rig.after([&] { rig.named<Desktop::NumberField>("Channel of layer 1").setValueByUser(3); });
    EXPECT_TRUE(rig.models().layers.layers().at(0).arpeggio) << "another edit leaves it as it is";
}

} // namespace
