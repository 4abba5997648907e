// The takes of the retrospective record.
#pragma once

#include "generators/recording/RetroRecord.h"

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QString>
#include <vector>

namespace Desktop {

class Models;

// When it began, how long it is, how many notes it has.
[[nodiscard]] QString textOf(const Backend::Recording::Take& take);
// Asks for a file and saves a take, counted from the last, which is 1; 0: everything. What came of it in words; empty
// when no file was chosen.
[[nodiscard]] QString saveTake(Models& models, int fromLast, QWidget* parent);

// All takes; one or everything can be saved as a MIDI file.
class TakeDialog final : public QDialog {
    Q_OBJECT

public:
    TakeDialog(Models& models, QWidget* parent);

private:
    void fill();

    Models& models_;
    QListWidget* list_;
    QLabel* result_;
    QPushButton *save_, *all_;
};

} // namespace Desktop
