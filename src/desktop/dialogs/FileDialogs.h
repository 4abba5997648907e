// Saving, loading and importing.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStringList>

namespace Desktop {

class Models;

// Saves the program: into a slot of the bank, or as a file of its own, or the bank as another file. Stays open until
// that is done, and says why when it cannot be.
class SaveDialog final : public QDialog {
    Q_OBJECT

public:
    // `parts`: what there are presets of.
    SaveDialog(Models& models, const QStringList& parts, QWidget* parent);

    // When it was accepted: which of the parts is to be saved as a preset instead; -1: none.
    [[nodiscard]] int presetAsked() const;

private:
    void save();
    void saved();
    [[nodiscard]] QString askForFile(const QString& filter, const QString& ending);

    Models& models_;
    QLineEdit* name_;
    QComboBox *slot_, *part_;
    QRadioButton *toSlot_, *toProgram_, *toBank_, *toPreset_;
    QLabel* remark_;
    bool isWaiting_ = false;
    int savedEdits_ = 0; // the place in the list of edits
};

// Asks for a program or bank and loads it; false: nothing was chosen.
bool loadFile(Models& models, QWidget* parent);
// Asks for a file of version 2 and where it goes, and imports it.
void importFile(Models& models, QWidget* parent);

} // namespace Desktop
