#include "desktop/models/KeptEdits.h"

#include "core/QelIF.h"
#include "desktop/models/Models.h"
#include "platform/PathText.h"

#include <QDir>
#include <QRegularExpression>
#include <QSaveFile>
#include <mutex>
#include <string>
#include <utility>

namespace Desktop {

namespace {
constexpr int pauseMilliseconds = 300;
} // namespace

struct KeptEdits::Latest {
    std::mutex mutex;
    std::string text; // under the mutex
    QString name;     // of the program; [gui]
};

KeptEdits::KeptEdits(Models& models) : models_(models), latest_(std::make_shared<Latest>()) {
    pause_.setSingleShot(true);
    pause_.setInterval(pauseMilliseconds);
    connect(&pause_, &QTimer::timeout, this, &KeptEdits::look);
    connect(&models.edits, &QUndoStack::indexChanged, this, [this] { pause_.start(); });
    connect(&models.program, &ProgramModel::exchanged, this, &KeptEdits::keep);
}

void KeptEdits::look() {
    if (!models_.edits.isClean()) {
        latest_->name = models_.program.title();
        models_.ask([latest = latest_](Backend::QelIF& qel) {
            std::string text = qel.getProgramText();
            const std::lock_guard lock(latest->mutex);
            latest->text = std::move(text);
        });
    }
}

void KeptEdits::keep() {
    std::string text;
    {
        const std::lock_guard lock(latest_->mutex);
        text.swap(latest_->text);
    }
    if (models_.edits.isClean() || text.empty()) {
        return;
    }
    QString program = QString::fromStdString(text);
    program.replace("<QelProgramFile>", "<ProgramFile>").replace("</QelProgramFile>", "</ProgramFile>");
    static const QRegularExpression forbidden(R"([<>:"/\\|?*])");
    const QDir folder(QString::fromStdString(Platform::textOf(models_.qel().getApplicationData())) + "/Programs");
    QSaveFile file(folder.absoluteFilePath(latest_->name.replace(forbidden, " ") + tr(" (unsaved)") + ".prg"));
    if (folder.mkpath(".") && file.open(QIODevice::WriteOnly) && file.write(program.toUtf8()) >= 0 && file.commit()) {
        emit kept(file.fileName());
    }
}

} // namespace Desktop
