// The copy of unsaved edits that survives a crash.
#pragma once

class QWidget;

namespace Desktop {

class Models;

// Writes the program as it is now, in a while, into the folder of the user's files.
void takeBackup(Models& models);
// Nothing is unsaved any more.
void dropBackup(Models& models);
// After a crash: asks whether the backup is wanted, and loads it: then it stays until that is saved. Otherwise it is
// dropped.
void offerBackup(Models& models, QWidget* parent);

} // namespace Desktop
