// Saving, loading and importing.
#pragma once

#include "generators/recording/RetroRecord.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <vector>

namespace Desktop {

class Models;

// Saves the program: into a slot of the bank, or as a file of its own, or the bank as another file.
class SaveDialog final : public QDialog {
    Q_OBJECT

public:
    SaveDialog(Models& models, QWidget* parent);

private:
    void save();
    [[nodiscard]] QString askForFile(const QString& filter, const QString& ending);

    Models& models_;
    QLineEdit* name_;
    QComboBox* slot_;
    QRadioButton *toSlot_, *toProgram_, *toBank_;
};

// Asks for a program or bank and loads it; false: nothing was chosen.
bool loadFile(Models& models, QWidget* parent);
void importFile(Models& models, QWidget* parent);

// The takes of the retrospective record; one can be saved as a MIDI file.
class TakeDialog final : public QDialog {
    Q_OBJECT

public:
    TakeDialog(Models& models, QWidget* parent);

private:
    void save();

    Models& models_;
    std::vector<Backend::Recording::Take> takes_;
    QListWidget* list_;
    QLabel* result_;
};

} // namespace Desktop
