// The bar at the top: program, tempo, output, and what is wanted at any time.
#pragma once

#include "gui/GuiCopies.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>
#include <vector>

namespace Desktop {

class Models;
class NumberField;

class SystemBar final : public QWidget {
    Q_OBJECT

public:
    SystemBar(Models& models, QWidget* parent);

    void showProgramMenu();
    void showOutputMenu();
    // Why there are no global keys here; empty: there are.
    void setGlobalKeysObstacle(const QString& reason);

signals:
    void setupAsked();
    void saveAsked();
    void loadAsked();
    void importAsked();
    void undoAsked();
    void takeAsked();
    void panicAsked();

private:
    void refresh();
    void fillProgramMenu();
    void fillOutputMenu();
    void fillTempoMenu();
    void tap();

    Models& models_;
    QToolButton* program_;
    QMenu* programMenu_;
    QLabel* bank_;
    NumberField* tempo_;
    QToolButton* source_;
    QMenu* sourceMenu_;
    QToolButton* output_;
    QMenu* outputMenu_;
    QPushButton* thru_;
    QPushButton* global_;
    QPushButton* take_;
    QElapsedTimer lastTap_;
    std::vector<qint64> taps_; // milliseconds between them
    QString obstacle_;
};

} // namespace Desktop
