// Somebody who tries everything: works whatever of the window can be seen, at random.
#pragma once

#include "desktop/DesktopRig.h"

#include <QPointer>
#include <QTimer>
#include <random>
#include <string>

// Clicks, drags, turns and types in what is in front: a menu, a dialog, else the main window. Dialogs and menus that
// run loops of their own are worked within those. Files are never chosen.
class RandomHands final {
public:
    RandomHands(DesktopRig& rig, unsigned seed);

    void act();
    // Lets go of everything, closes what is open.
    void rest();
    [[nodiscard]] const std::string& last() const { return last_; } // what was done last

private:
    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    QPoint placeIn(const QWidget& widget) { return {below(widget.width()), below(widget.height())}; }
    void tend();
    void work(QWidget& front);
    void type(QWidget& front);
    void drag(const QPointer<QWidget>& widget);

    DesktopRig& rig_;
    std::mt19937 random_;
    std::string last_;
    QTimer inner_;
};
