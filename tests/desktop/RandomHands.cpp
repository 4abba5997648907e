#include "desktop/RandomHands.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QFileDialog>
#include <QTest>
#include <QWheelEvent>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string_view>
#include <vector>

namespace {

constexpr Qt::Key keys[]{Qt::Key_Tab,   Qt::Key_Backtab, Qt::Key_Space,  Qt::Key_Return,  Qt::Key_Escape,
                         Qt::Key_Up,    Qt::Key_Down,    Qt::Key_Left,   Qt::Key_Right,   Qt::Key_Home,
                         Qt::Key_End,   Qt::Key_PageUp,  Qt::Key_Delete, Qt::Key_F2,      Qt::Key_F7,
                         Qt::Key_Minus, Qt::Key_Comma,   Qt::Key_Shift,  Qt::Key_PageDown};

QWidget* inFront() {
    QWidget* const popup = QApplication::activePopupWidget();
    return popup != nullptr ? popup : QApplication::activeModalWidget();
}

} // namespace

RandomHands::RandomHands(DesktopRig& rig, unsigned seed) : rig_(rig), random_(seed) {
    inner_.setSingleShot(true);
    QObject::connect(&inner_, &QTimer::timeout, &inner_, [this] { tend(); });
    inner_.start(0);
}

// Runs inside the loop of a menu or a dialog, and begins the next round before anything may open another one.
void RandomHands::tend() {
    inner_.start(0);
    if (inFront() != nullptr) {
        act();
    }
}

void RandomHands::act() {
    QWidget* const front = inFront();
    rig_.after([&] { work(front != nullptr ? *front : rig_.window()); });
}

void RandomHands::work(QWidget& front) {
    const bool isMain = &front == &rig_.window();
    if (!isMain && (qobject_cast<QFileDialog*>(&front) != nullptr || below(8) == 0)) {
        last_ = std::string("close ") + front.metaObject()->className();
        front.close();
        return;
    }
    std::map<std::string_view, std::vector<QWidget*>> kinds; // of hundreds of widgets most are labels
    kinds["itself"] = {&front};
    for (QWidget* const each : front.findChildren<QWidget*>()) {
        if (each->isVisible() && each->isEnabled() && each->window() == &front && each->width() > 0 &&
            each->height() > 0) {
            kinds[each->metaObject()->className()].push_back(each);
        }
    }
    const auto& all = std::next(kinds.begin(), below(static_cast<int>(kinds.size())))->second;
    const QPointer<QWidget> widget = all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
    const int what = below(10);
    last_ =
        std::to_string(what) + " " + widget->metaObject()->className() + " " + widget->accessibleName().toStdString();
    if (std::getenv("TEMBREL_RANDOM_TRACE") != nullptr) {
        std::cerr << last_ << std::endl; // a crash says what led to it
    }
    const QPoint place = placeIn(*widget);
    switch (what) {
    case 0:
    case 1:
        type(front);
        break;
    case 2: {
        QWheelEvent wheel(place, widget->mapToGlobal(place), {}, {0, below(2) == 0 ? 120 : -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &wheel);
        break;
    }
    case 3:
        if (isMain) {
            below(2) == 0 ? rig_.models().edits.undo() : rig_.models().edits.redo();
        }
        break;
    case 4: {
        QContextMenuEvent menu(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
        QApplication::sendEvent(widget, &menu);
        break;
    }
    case 5:
        QTest::mouseDClick(widget, Qt::LeftButton, {}, place);
        break;
    case 6:
        if (isMain) { // what closed is opened again
            rig_.window().showPanel(static_cast<Gui::Panel>(below(Gui::panelCount)), true);
        }
        break;
    default:
        drag(widget);
    }
}

// Half of the keys stay down until something lets go of them.
void RandomHands::type(QWidget& front) {
    QWidget* const focus = QApplication::focusWidget();
    QWidget* const target = focus != nullptr && focus->window() == &front ? focus : &front;
    const int other = static_cast<int>(std::size(keys));
    const int kind = below(other + 36);
    const Qt::Key key = kind < other        ? keys[kind]
                        : kind < other + 26 ? static_cast<Qt::Key>(Qt::Key_A + kind - other)
                                            : static_cast<Qt::Key>(Qt::Key_0 + kind - other - 26);
    below(2) == 0 ? QTest::keyPress(target, key) : QTest::keyClick(target, key);
}

void RandomHands::drag(const QPointer<QWidget>& widget) {
    const QPoint to = placeIn(*widget);
    QTest::mousePress(widget, Qt::LeftButton, {}, placeIn(*widget));
    if (widget) {
        QTest::mouseMove(widget, to);
    }
    if (widget) {
        QTest::mouseRelease(widget, Qt::LeftButton, {}, to);
    }
}

void RandomHands::rest() {
    inner_.stop();
    while (QWidget* const front = inFront()) {
        rig_.after([&] { front->close(); });
    }
    rig_.after([this] { rig_.gui->end(); });
}
