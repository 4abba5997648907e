// The window itself: where it is, what it says of itself, and what the settings make of it.
#include "core/QelIF.h"
#include "core/RegistrySettings.h"
#include "desktop/DesktopRig.h"
#include "desktop/panels/ControlsPanel.h"
#include "desktop/widgets/EventList.h"
#include "desktop/widgets/ValueInstrument.h"
#include "values/Rect.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using Gui::ChangedSetting;
using Kind = Desktop::EventsModel::Kind;

class DesktopWindow : public testing::Test {
protected:
    void set(ChangedSetting setting, int value) {
        rig.after([&] { rig.models().settings.set(setting, value); });
    }
    void receive(Backend::MidiEngine::MessageType type, int d1, int d2) {
        rig.models().events.addReceived(
            {type, static_cast<std::int8_t>(d1), static_cast<std::int8_t>(d2), 0, 0, -1, 0, Backend::noTicks});
        rig.models().events.drain();
    }
    DesktopRig rig;
};

TEST_F(DesktopWindow, DocksToTheBottomEdgeAndGoesBack) {
    rig.after([&] { rig.window().setGeometry(20, 30, 700, 300); });
    const QRect before = rig.window().geometry();
    set(ChangedSetting::dockToBottomEdge, 1);
    const QRect free = rig.window().screen()->availableGeometry();
    EXPECT_EQ(rig.window().geometry().bottom(), free.bottom());
    EXPECT_EQ(rig.window().width(), std::max(free.width(), rig.window().minimumSizeHint().width()));
    set(ChangedSetting::dockToBottomEdge, 0);
    EXPECT_EQ(rig.window().geometry(), before);
}

TEST_F(DesktopWindow, StaysOnTopAndHasABorderWhenItIsTo) {
    set(ChangedSetting::alwaysOnTop, 1);
    EXPECT_TRUE(rig.window().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(rig.window().isVisible());
    set(ChangedSetting::alwaysOnTop, 0);
    EXPECT_FALSE(rig.window().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    for (const int on : {0, 1}) {
        set(ChangedSetting::useSkinBorder, on);
        EXPECT_EQ(rig.window().layout()->contentsMargins().left() > 0, on == 1);
    }
}

TEST_F(DesktopWindow, IsMovedByFunctionsAndRememberedAtTheEnd) {
    rig.after([&] { rig.window().move(40, 50); });
    rig.afterCall([](auto& qel) { qel.executeFunction("<MoveWindow x=\"+10\" y=\"\"/>"); });
    EXPECT_EQ(rig.window().pos(), QPoint(50, 50));
    rig.afterCall([](auto& qel) { qel.executeFunction("<MoveWindow x=\"7\" y=\"-20\"/>"); });
    EXPECT_EQ(rig.window().pos(), QPoint(7, 30));
    const QPoint place = rig.window().geometry().topLeft(); // without the frame
    rig.after([&] { rig.window().close(); });
    rig.afterCall([&](auto& qel) {
        EXPECT_EQ(qel.getRegistrySettings().getLastWindowPosition().left, place.x());
        EXPECT_EQ(qel.getRegistrySettings().getLastWindowPosition().top, place.y());
    });
}

TEST_F(DesktopWindow, TheMouseIsAsSensitiveAsItIsSet) {
    auto* const volume = rig.window().controls().instrumentAt({0, 2});
    ASSERT_NE(volume, nullptr);
    const auto drag = [&] {
        rig.after([&] { volume->setValueByUser(20); });
        const QPoint from = volume->rect().center();
        rig.after([&] {
            QTest::mousePress(volume, Qt::LeftButton, {}, from);
            QTest::mouseMove(volume, from - QPoint(0, 4));
            QTest::mouseRelease(volume, Qt::LeftButton, {}, from - QPoint(0, 4));
        });
        return volume->value() - 20;
    };
    set(ChangedSetting::mouseSensitivity, 1);
    const int once = drag();
    ASSERT_GT(once, 0);
    set(ChangedSetting::mouseSensitivity, 3);
    EXPECT_NEAR(drag(), 3 * once, 3);
    set(ChangedSetting::mouseSensitivity, 1);
}

TEST_F(DesktopWindow, GivesTheListOfEventsTheHeightThatIsSet) {
    rig.after([&] { rig.window().resize(1400, 1200); }); // so that the other rows can give way, whatever the font
    for (const int height : {260, 150}) {
        set(ChangedSetting::displayHeight, height);
        EXPECT_NEAR(rig.window().findChild<Desktop::EventList*>()->height(), height, 2);
    }
}

TEST_F(DesktopWindow, SaysHowItIs) {
    Desktop::HostNews news;
    news.status = {"JACK", 120, 3, 0.41, 0.12};
    rig.window().showNews(news);
    auto& status = rig.named<QLabel>("Status");
    EXPECT_EQ(status.text().toStdString(), "latency 0.4 ms · jitter 0.1 · JACK · 3 notes held");
    news.status = {"none", 120, 1};
    rig.window().showNews(news);
    EXPECT_EQ(status.text().toStdString(), "none · 1 note held");
}

TEST_F(DesktopWindow, ListsWhatTheFilterLetsThrough) {
    using Backend::MidiEngine::MessageType;
    set(ChangedSetting::displayMidiInputEvents, 1);
    Desktop::EventsModel& events = rig.models().events;
    receive(MessageType::noteOn, 60, 100);
    receive(MessageType::controllerChange, 7, 1);
    events.setHidden(Kind::notes, true);
    EXPECT_EQ(events.events().size(), 1U);
    receive(MessageType::noteOff, 60, 100);
    EXPECT_EQ(events.events().size(), 1U);
    events.setHidden(Kind::notes, false);
    events.setOnlyPort("In 2");
    receive(MessageType::noteOn, 60, 100);
    EXPECT_TRUE(events.events().empty());
    events.setOnlyPort("In 1");
    receive(MessageType::noteOn, 60, 100);
    ASSERT_EQ(events.events().size(), 1U);
    EXPECT_FALSE(events.nameOf(events.events().front()).contains("90 3C 64"));
    set(ChangedSetting::displayNumbers, 1);
    EXPECT_TRUE(events.nameOf(events.events().front()).endsWith("90 3C 64"))
        << events.nameOf(events.events().front()).toStdString();
}

} // namespace
