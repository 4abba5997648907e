#include "desktop/WindowDialogs.h"

#include "desktop/dialogs/FileDialogs.h"
#include "desktop/dialogs/SetupDialog.h"
#include "desktop/dialogs/TakeDialog.h"
#include "desktop/models/Models.h"
#include "desktop/panels/PanelFrame.h"

#include <QMessageBox>
#include <utility>

namespace Desktop {

WindowDialogs::WindowDialogs(Models& models, QWidget& window, std::vector<PanelFrame*> panels,
                             std::function<void(const QString&)> say)
    : models_(models), window_(window), panels_(std::move(panels)), say_(std::move(say)) {}

void WindowDialogs::openSetup(const std::function<void(const QString&)>& choosePalette) {
    SetupDialog dialog(models_, &window_);
    QObject::connect(&dialog, &SetupDialog::paletteChosen, &window_, choosePalette);
    dialog.exec();
}

bool WindowDialogs::openSave() {
    QStringList titles;
    for (const PanelFrame* const each : panels_) {
        titles << each->title();
    }
    SaveDialog dialog(models_, titles, &window_);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    if (const int part = dialog.presetAsked(); part >= 0) {
        panels_[static_cast<std::size_t>(part)]->askToSavePreset();
    }
    return models_.edits.isClean();
}

bool WindowDialogs::openLoad() {
    return askAboutUnsaved() && loadFile(models_, &window_);
}

void WindowDialogs::openImport() {
    if (askAboutUnsaved()) {
        importFile(models_, &window_);
    }
}

void WindowDialogs::openTake() {
    TakeDialog(models_, &window_).exec();
}

void WindowDialogs::saveTakeFromLast(int fromLast) {
    if (const QString came = saveTake(models_, fromLast, &window_); !came.isEmpty()) {
        say_(came);
    }
}

bool WindowDialogs::askAboutUnsaved() {
    if (models_.edits.isClean()) {
        return true;
    }
    QMessageBox box(QMessageBox::NoIcon, QObject::tr("Unsaved changes"),
                    QObject::tr("The program “%1” has changes that are not saved.").arg(models_.program.title()),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &window_);
    const int answer = box.exec();
    if (answer == QMessageBox::Save) {
        return openSave();
    }
    return answer == QMessageBox::Discard;
}

} // namespace Desktop
