#include "desktop/Backup.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/models/Models.h"
#include "platform/PathText.h"

#include <QDateTime>
#include <QFileInfo>
#include <QMessageBox>
#include <filesystem>
#include <system_error>

namespace Desktop {

namespace {

std::filesystem::path backupFile(const Backend::QelIF& qel) {
    return qel.getApplicationData() / "Unsaved.prg";
}

} // namespace

void takeBackup(Models& models) {
    models.backend().postSaveToProgram(Platform::textOf(backupFile(models.qel())), nullptr);
}

void dropBackup(Models& models) {
    models.ask([](Backend::QelIF& qel) { // behind one that may still be written
        std::error_code none;
        std::filesystem::remove(backupFile(qel), none);
    });
}

void offerBackup(Models& models, QWidget* parent) {
    const QString file = QString::fromStdString(Platform::textOf(backupFile(models.qel())));
    const QFileInfo info(file);
    if (!info.exists()) {
        return;
    }
    auto* const box =
        new QMessageBox(QMessageBox::Question, QObject::tr("Unsaved changes"),
                        QObject::tr("The program ended unexpectedly. Changes of %1 were not saved. Load them?")
                            .arg(QLocale().toString(info.lastModified(), QLocale::ShortFormat)),
                        QMessageBox::Yes | QMessageBox::No, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QMessageBox::finished, box, [&models, file](int answer) {
        if (answer == QMessageBox::Yes) {
            models.edits.clear();
            models.backend().postLoadProgram(file.toStdString());
            models.edits.resetClean(); // it is no more saved than it was
        } else {
            dropBackup(models);
        }
    });
    box->open(); // the start goes on behind it
}

} // namespace Desktop
