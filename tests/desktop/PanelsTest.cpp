// Every panel shows, plays and edits its section.
#include "desktop/DesktopRig.h"
#include "desktop/TabOrder.h"
#include "desktop/dialogs/FileDialogs.h"
#include "desktop/dialogs/SetupDialog.h"
#include "desktop/dialogs/TakeDialog.h"
#include "desktop/panels/ControlsPanel.h"
#include "desktop/panels/OutputPanel.h"
#include "desktop/panels/PanelFrame.h"
#include "desktop/widgets/EventList.h"
#include "desktop/widgets/MenuButton.h"
#include "desktop/widgets/MusicKeyboard.h"
#include "desktop/widgets/NumberField.h"
#include "desktop/widgets/RangeBar.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace {

using Gui::Panel;

class DesktopPanels : public testing::Test {
protected:
    void showAll() {
        for (std::size_t i = 0; i < Gui::panelCount; ++i) {
            rig.after([&] { rig.window().showPanel(static_cast<Panel>(i), true); });
        }
    }
    DesktopRig rig;
};

TEST_F(DesktopPanels, AreShownByButtonsFunctionsAndTheirOwnClose) {
    auto& button = rig.named<QPushButton>("Panel Zones");
    EXPECT_FALSE(rig.gui->isZonePanelShowing());
    rig.after([&] { button.click(); });
    EXPECT_TRUE(rig.gui->isZonePanelShowing());
    EXPECT_TRUE(rig.window().panel(Panel::zone)->isVisible());
    rig.afterCall([](auto& qel) { qel.executeFunction("<ShowZone type=\"off\"/>"); });
    EXPECT_FALSE(rig.gui->isZonePanelShowing());
    rig.afterCall([](auto& qel) { qel.executeFunction("<ShowZone/>"); });
    EXPECT_TRUE(button.isChecked());
    rig.after([&] { rig.named<QToolButton>("Close Zones").click(); });
    EXPECT_FALSE(rig.window().panel(Panel::zone)->isVisible());
}

TEST_F(DesktopPanels, LayersAreAddedEditedAndUndone) {
    rig.after([&] { rig.named<QToolButton>("Add a layer").click(); });
    EXPECT_EQ(rig.backend.afterMidi(0x90, 64, 100), "0 90 64 100; 0 91 64 100");
    rig.backend.afterMidi(0x80, 64, 64);
    rig.after([&] { rig.named<QPushButton>("Mute of layer 1").click(); });
    EXPECT_EQ(rig.backend.afterMidi(0x90, 64, 100), "0 91 64 100");
    rig.backend.afterMidi(0x80, 64, 64);
    auto& range = rig.named<Desktop::RangeBar>("Notes of layer 2");
    rig.after([&] {
        QTest::mousePress(&range, Qt::LeftButton, {}, {1, range.height() / 2});
        QTest::mouseMove(&range, {range.width() / 2 + 2, range.height() / 2});
        QTest::mouseRelease(&range, Qt::LeftButton, {}, {range.width() / 2 + 2, range.height() / 2});
    });
    EXPECT_GT(rig.models().layers.layers().at(1).minNote.getNumber(), 40);
    for (int i = 0; i < 3; ++i) {
        rig.after([&] { rig.models().edits.undo(); });
    }
    EXPECT_EQ(rig.models().layers.layers().size(), 1U);
    EXPECT_EQ(rig.backend.afterMidi(0x90, 64, 100), "0 90 64 100");
}

TEST_F(DesktopPanels, AFaderIsDraggedWheeledAndFollows) {
    auto* const volume = rig.window().controls().instrumentAt({0, 2});
    ASSERT_NE(volume, nullptr);
    const std::string played = rig.after([&] { DesktopRig::wheel(*volume, 1); });
    EXPECT_EQ(played, "0 B0 7 101");
    rig.backend.afterMidi(0xB0, 7, 33);
    rig.after([] {});
    EXPECT_EQ(volume->value(), 33) << "the same controller, passing the engine";
    EXPECT_TRUE(volume->accessibleName() == "VOL" && volume->statusTip().contains("Channel Volume"));
}

TEST_F(DesktopPanels, PitchBendSpringsBackWhenItIsLetGo) {
    auto* const bend = rig.window().controls().instrumentAt({0, 0});
    ASSERT_NE(bend, nullptr);
    rig.after([&] {
        QTest::mousePress(bend, Qt::LeftButton, {}, bend->rect().center());
        QTest::mouseMove(bend, bend->rect().center() - QPoint(0, 20));
    });
    EXPECT_GT(bend->value(), 8192);
    const std::string played =
        rig.after([&] { QTest::mouseRelease(bend, Qt::LeftButton, {}, bend->rect().center() - QPoint(0, 20)); });
    EXPECT_EQ(played, "0 E0 0 64");
    EXPECT_EQ(bend->value(), 8192);
}

TEST_F(DesktopPanels, TheMusicKeyboardPlaysByPlaceAndGlides) {
    auto& keyboard = rig.named<Desktop::MusicKeyboard>("Music keyboard");
    const auto at = [&](int note, double depth) {
        const QRectF key = keyboard.rectOf(note);
        return QPoint(static_cast<int>(key.center().x()), static_cast<int>(key.height() * depth));
    };
    std::string soft = rig.after([&] { QTest::mousePress(&keyboard, Qt::LeftButton, {}, at(60, 0.7)); });
    EXPECT_TRUE(soft.starts_with("0 90 60 ")) << soft;
    EXPECT_TRUE(rig.after([&] { QTest::mouseMove(&keyboard, at(62, 0.95)); }).starts_with("0 80 60 64; 0 90 62 "));
    EXPECT_EQ(keyboard.valueText(), "D4") << "lit by what sounds";
    EXPECT_EQ(rig.after([&] { rig.window().hide(); }), "0 80 62 64") << "hidden, it lets go";
}

TEST_F(DesktopPanels, PresetsThatWereSavedAreOffered) {
    showAll();
    int count = 0;
    for (std::size_t i = 0; i < Gui::panelCount; ++i) {
        Desktop::PanelFrame* const panel = rig.window().panel(static_cast<Panel>(i));
        auto* const button =
            panel != nullptr ? rig.find<QToolButton>(QString("Presets of %1").arg(panel->title())) : nullptr;
        if (button == nullptr || !button->isVisible()) {
            continue;
        }
        rig.after([&] { panel->savePreset("Mine"); });
        emit button->menu()->aboutToShow();
        QStringList names;
        bool canSave = false;
        for (QAction* const action : button->menu()->actions()) {
            names << action->text();
            canSave = canSave || (action->text() == "Save as…" && action->isEnabled());
        }
        EXPECT_EQ(names.contains("Mine"), canSave) << panel->title().toStdString();
        count += canSave ? 1 : 0;
    }
    EXPECT_GE(count, 4);
}

TEST_F(DesktopPanels, ZonesAndOscillatorsAreEdited) {
    rig.after([&] { rig.models().zones.add(); });
    rig.after([&] { rig.named<Desktop::NumberField>("Transposition of zone 1").setValueByUser(12); });
    EXPECT_EQ(rig.after([&] { QTest::keyPress(&rig.window(), Qt::Key_Q); }), "0 90 72 100");
    rig.after([&] { QTest::keyRelease(&rig.window(), Qt::Key_Q); });
    rig.after([&] { rig.named<QToolButton>("Add an oscillator").click(); });
    rig.after([&] { rig.named<QPushButton>("Start and stop of oscillator 1").click(); });
    rig.after([] {});
    ASSERT_EQ(rig.models().oscillators.list().size(), 1U);
    EXPECT_TRUE(rig.models().oscillators.list().begin()->playing);
}

TEST_F(DesktopPanels, EventsAreListedUpToTenThousand) {
    Desktop::EventsModel& events = rig.models().events;
    rig.after([&] { rig.models().settings.set(Gui::ChangedSetting::displayMidiInputEvents, 1); });
    for (int i = 0; i < 12000; ++i) {
        events.addReceived({Backend::MidiEngine::MessageType::controllerChange, static_cast<std::int8_t>(i % 100), 1, 0,
                            0, -1, 0, Backend::noTicks});
        if (i % 5000 == 0) {
            events.drain();
        }
    }
    events.drain();
    EXPECT_EQ(events.events().size(), Desktop::EventsModel::capacity);
    EXPECT_EQ(events.events().back().message.getD1(), 11999 % 100) << "the newest are kept";
}

TEST_F(DesktopPanels, TabComesToEverythingOnceAndPanelByPanel) {
    showAll();
    rig.after([&] {
        rig.models().layers.add(); // after the other panels have been made
        rig.models().zones.add();
        rig.models().oscillators.add();
    });
    rig.after([&] { rig.named<QToolButton>("Details of layer 1").click(); });
    std::set<QWidget*> expected;
    for (QWidget* const each : rig.window().findChildren<QWidget*>()) {
        const bool inside =
            (each->parentWidget()->focusPolicy() & Qt::TabFocus) != 0 || qobject_cast<QScrollBar*>(each) != nullptr;
        if (each->isVisible() && each->isEnabled() && !inside && (each->focusPolicy() & Qt::TabFocus) != 0 &&
            each->focusProxy() == nullptr && each->window() == &rig.window()) {
            expected.insert(each);
        }
    }
    const auto panelOf = [](QWidget* widget) {
        while (widget != nullptr && qobject_cast<Desktop::PanelFrame*>(widget) == nullptr) {
            widget = widget->parentWidget();
        }
        return widget;
    };
    std::set<QWidget*> seen;
    std::set<QWidget*> panelsLeft;
    QWidget* panel = nullptr;
    QWidget* here = Desktop::nextByTab(rig.window(), nullptr, true);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_TRUE(seen.insert(here).second) << "again " << here->accessibleName().toStdString();
        if (panelOf(here) != panel) {
            EXPECT_TRUE(panelsLeft.insert(panel).second) << here->accessibleName().toStdString();
            panel = panelOf(here);
        }
        QWidget* const next = Desktop::nextByTab(rig.window(), here, true);
        EXPECT_EQ(Desktop::nextByTab(rig.window(), next, false), here) << "the way back";
        here = next;
    }
    for (QWidget* const each : expected) {
        EXPECT_TRUE(seen.contains(each)) << each->metaObject()->className() << ' '
                                         << each->accessibleName().toStdString();
    }
    rig.after([&] { rig.window().setFocus(); });
    rig.after([&] { QTest::keyClick(&rig.window(), Qt::Key_Tab); });
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), "Previous program");
}

// What somebody who cannot see works with.
bool isInteractive(const QWidget& widget) {
    return widget.focusPolicy() != Qt::NoFocus || qobject_cast<const QAbstractButton*>(&widget) != nullptr;
}

// What has no name, or says nothing of what it is, or has the name of something else that can be seen beside it.
std::string namelessIn(QWidget& root) {
    std::string nameless;
    std::map<QString, int> names;
    for (QWidget* const each : root.findChildren<QWidget*>()) {
        const bool inside = qobject_cast<QComboBox*>(each->parentWidget()) != nullptr ||
                            qobject_cast<QAbstractItemView*>(each) != nullptr ||
                            qobject_cast<QScrollBar*>(each) != nullptr || each->objectName().startsWith("qt_") ||
                            each->inherits("QComboBoxPrivateContainer") || each->inherits("QDialogButtonBox") ||
                            each->inherits("QTabBar") || each->inherits("CloseButton") ||
                            qobject_cast<QAbstractScrollArea*>(each->parentWidget()) != nullptr;
        QAccessibleInterface* const access = QAccessible::queryAccessibleInterface(each);
        if (inside || !isInteractive(*each)) {
            continue;
        }
        const std::string what =
            std::string(each->metaObject()->className()) + " in " +
            (each->parentWidget() != nullptr ? each->parentWidget()->metaObject()->className() : "nothing");
        const bool isList = qobject_cast<const QComboBox*>(each) != nullptr && each->isVisible();
        const QString name =
            access != nullptr ? access->text(isList ? QAccessible::Description : QAccessible::Name) : QString();
        if (name.isEmpty()) {
            nameless += what + "\n";
        } else if (each->isVisible() && ++names[name] == 2) {
            nameless += what + ": a second " + name.toStdString() + "\n";
        }
        const QAccessible::Role role = access != nullptr ? access->role() : QAccessible::NoRole;
        if (each != &root && (role == QAccessible::NoRole || role == QAccessible::Client) &&
            qobject_cast<QTabWidget*>(each) == nullptr) {
            nameless += what + ": what is " + name.toStdString() + "?\n";
        }
        if (each->isVisible() && role == QAccessible::ButtonMenu &&
            qobject_cast<const Desktop::MenuButton*>(each) != nullptr &&
            access->text(QAccessible::Description).isEmpty()) {
            nameless += what + ": nothing is chosen by " + name.toStdString() + "\n";
        }
    }
    return nameless;
}

TEST_F(DesktopPanels, NothingThatOneCanWorkIsNameless) {
    showAll();
    rig.after([&] {
        rig.models().zones.add();
        rig.models().oscillators.add();
        rig.window().showPanel(Panel::cc, true);
    });
    rig.after([&] { rig.named<QPushButton>("Add the first message").click(); });
    rig.after([&] { rig.named<QToolButton>("Details of layer 1").click(); });
    rig.after([&] { rig.named<QPushButton>("New sequence of layer 1").click(); });
    rig.after([&] { rig.named<QPushButton>("Sequence editor of layer 1").click(); });
    for (const char* const editor : {"Edit the keys", "Edit the controls"}) {
        rig.after([&] { rig.named<QToolButton>(editor).click(); });
    }
    EXPECT_EQ(namelessIn(rig.window()), "");
    auto& functions = rig.named<QComboBox>("Function when the key goes down");
    for (int i = 0; i < functions.count(); ++i) {
        rig.after([&] {
            functions.setCurrentIndex(i);
            emit functions.activated(i);
        });
        EXPECT_EQ(namelessIn(*rig.window().panel(Panel::computerInput)), "") << functions.itemText(i).toStdString();
    }
    Desktop::SetupDialog setup(rig.models(), nullptr);
    EXPECT_EQ(namelessIn(setup), "");
    Desktop::SaveDialog save(rig.models(), {"Layers"}, nullptr);
    EXPECT_EQ(namelessIn(save), "");
    Desktop::TakeDialog takes(rig.models(), nullptr);
    EXPECT_EQ(namelessIn(takes), "");
    Desktop::PresetDialog preset("Layers", "", {}, {{"L:1", true}}, nullptr);
    EXPECT_EQ(namelessIn(preset), "");
}

} // namespace
