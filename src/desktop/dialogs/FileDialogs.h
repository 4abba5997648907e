// Saving, loading and importing.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>

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
// What can be done with the retrospective record.
void takeMenu(Models& models, QWidget* parent);

} // namespace Desktop
