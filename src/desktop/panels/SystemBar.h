// The bar at the top: program, tempo, output, and what is wanted at any time.
#pragma once

#include "gui/GuiCopies.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>
#include <functional>
#include <utility>
#include <vector>

namespace Desktop {

class MenuButton;
class Models;
class NumberField;

class SystemBar final : public QWidget {
    Q_OBJECT

public:
    SystemBar(Models& models, QWidget* parent);

    void showProgramMenu();
    void showOutputMenu();
    // Asked before another program takes the place of this one.
    void setLeaving(std::function<bool()> mayLeave) { mayLeave_ = std::move(mayLeave); }
    // Why there are no global keys here; empty: there are.
    void setGlobalKeysObstacle(const QString& reason);

signals:
    void setupAsked();
    void saveAsked();
    void loadAsked();
    void importAsked();
    void takesAsked();            // all of them
    void takeAsked(int fromLast); // 1: the last one; 0: everything
    void panicAsked();

private:
    void refresh();
    void fillProgramMenu();
    void fillOutputMenu();
    void fillTempoMenu();
    void fillBankMenu();
    void fillTakeMenu();
    void askForBankSize();
    void leave(const std::function<void()>& how);
    void tap();

    Models& models_;
    MenuButton* program_;
    QMenu* programMenu_;
    MenuButton* bank_;
    QMenu* bankMenu_;
    NumberField* tempo_;
    MenuButton* source_;
    QMenu* sourceMenu_;
    MenuButton* output_;
    QMenu* outputMenu_;
    QPushButton* thru_;
    QPushButton* global_;
    QMenu* takeMenu_;
    QElapsedTimer lastTap_;
    std::vector<qint64> taps_; // milliseconds between them
    QString obstacle_;
    std::function<bool()> mayLeave_;
};

} // namespace Desktop
