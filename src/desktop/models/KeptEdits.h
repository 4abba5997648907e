// Unsaved edits that a change of program, played by a key or by MIDI, would take away without asking.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>

namespace Desktop {

class Models;

// Has the program as it was after the latest edits, and writes it into a file of its own when another one takes its
// place while they are unsaved. [gui]
class KeptEdits final : public QObject {
    Q_OBJECT

public:
    // Before anybody else hears of ProgramModel::exchanged: the edits are still there then.
    explicit KeptEdits(Models& models);

    // Takes the program as it is now, if anything is unsaved; by itself a moment after each edit.
    void look();

signals:
    void kept(const QString& file);

private:
    struct Latest;

    void keep();

    Models& models_;
    std::shared_ptr<Latest> latest_; // written by the backend
    QTimer pause_;                   // after an edit, before it is looked at
};

} // namespace Desktop
