#include "desktop/dialogs/FileDialogs.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "gui/QelGui.h"
#include "platform/PathText.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>
#include <filesystem>

namespace Desktop {

namespace {

QString folderOf(Models& models, const char* name) {
    const QString path =
        QString::fromStdString(Platform::textOf(models.qel().getApplicationData())) + "/" + QString::fromLatin1(name);
    QDir().mkpath(path);
    return path;
}

} // namespace

SaveDialog::SaveDialog(Models& models, QWidget* parent) : QDialog(parent), models_(models) {
    setWindowTitle(tr("Save"));
    auto* const all = new QVBoxLayout(this);
    all->setSpacing(grid(2));
    all->addWidget(new QLabel(tr("Name of the program"), this));
    name_ = new QLineEdit(QString::fromStdString(models.program.program().name), this);
    name_->setAccessibleName(tr("Name of the program"));
    all->addWidget(name_);
    const auto way = [&](const QString& text) {
        auto* const button = new QRadioButton(text, this);
        button->setAccessibleName(text);
        all->addWidget(button);
        return button;
    };
    toSlot_ = way(tr("Into a slot of the bank"));
    slot_ = new QComboBox(this);
    slot_->setAccessibleName(tr("Slot of the bank"));
    const auto& programs = models.program.bank().programs;
    for (std::size_t i = 0; i < programs.size(); ++i) {
        slot_->addItem(
            QStringLiteral("%1  %2").arg(i + 1, 3, 10, QLatin1Char('0')).arg(QString::fromStdString(programs[i])));
    }
    slot_->setCurrentIndex(models.program.program().slot);
    all->addWidget(slot_);
    toProgram_ = way(tr("As a program file …"));
    toBank_ = way(tr("The whole bank, with this program in it, as another file …"));
    toSlot_->setEnabled(!programs.empty());
    toBank_->setEnabled(!programs.empty());
    (programs.empty() ? toProgram_ : toSlot_)->setChecked(true);
    all->addStretch(1);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &SaveDialog::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    all->addWidget(buttons);
}

QString SaveDialog::askForFile(const QString& filter, const QString& ending) {
    const QString start =
        folderOf(models_, ending == ".bnk" ? "Banks" : "Programs") + "/" + name_->text().trimmed() + ending;
    QString file = QFileDialog::getSaveFileName(this, windowTitle(), start, filter);
    if (!file.isEmpty() && QFileInfo(file).suffix().isEmpty()) {
        file += ending;
    }
    return file;
}

void SaveDialog::save() {
    Backend::QelMessageManager& backend = models_.backend();
    const std::string name = name_->text().toStdString();
    if (name != models_.program.program().name) {
        backend.postChangeProgramName(name);
    }
    Platform::WindowHandle owner = models_.gui().getWindowHandle();
    if (toSlot_->isChecked()) {
        backend.postSaveToCurrentBank(slot_->currentIndex(), owner);
    } else if (toProgram_->isChecked()) {
        const QString file = askForFile(tr("Programs (*.prg)"), ".prg");
        if (file.isEmpty()) {
            return;
        }
        backend.postSaveToProgram(file.toStdString(), owner);
    } else {
        const QString file = askForFile(tr("Banks (*.bnk)"), ".bnk");
        if (file.isEmpty()) {
            return;
        }
        backend.postSaveToBank(file.toStdString(), owner);
    }
    models_.edits.setClean();
    accept();
}

bool loadFile(Models& models, QWidget* parent) {
    const QString file = QFileDialog::getOpenFileName(parent, QObject::tr("Load"), folderOf(models, "Banks"),
                                                      QObject::tr("Banks and programs (*.bnk *.prg)"));
    if (file.isEmpty()) {
        return false;
    }
    models.edits.clear();
    if (file.endsWith(".bnk", Qt::CaseInsensitive)) {
        models.backend().postLoadBank(file.toStdString());
    } else {
        models.backend().postLoadProgram(file.toStdString());
    }
    return true;
}

void importFile(Models& models, QWidget* parent) {
    const QString source = QFileDialog::getOpenFileName(parent, QObject::tr("Import from version 2"), QDir::homePath(),
                                                        QObject::tr("Banks, programs and presets (*)"));
    if (source.isEmpty()) {
        return;
    }
    const QString start = folderOf(models, "Banks") + "/" + QFileInfo(source).completeBaseName();
    const QString target =
        QFileDialog::getSaveFileName(parent, QObject::tr("Where the imported file goes"), start + ".bnk",
                                     QObject::tr("Banks (*.bnk);;Programs (*.prg);;Presets (*.pst)"));
    if (target.isEmpty()) {
        return;
    }
    Backend::QelMessageManager& backend = models.backend();
    Platform::WindowHandle owner = models.gui().getWindowHandle();
    if (target.endsWith(".prg")) {
        backend.postImportVersion2Program(source.toStdString(), target.toStdString(), owner);
    } else if (target.endsWith(".pst")) {
        backend.postImportVersion2Preset(source.toStdString(), target.toStdString(), owner);
    } else {
        backend.postImportVersion2Bank(source.toStdString(), target.toStdString(), owner);
    }
}

TakeDialog::TakeDialog(Models& models, QWidget* parent) : QDialog(parent), models_(models) {
    setWindowTitle(tr("Takes"));
    auto* const all = new QVBoxLayout(this);
    all->addWidget(
        new QLabel(tr("Everything that is played is recorded. A take ends with five seconds of silence."), this));
    list_ = new QListWidget(this);
    list_->setAccessibleName(tr("Takes, the latest first"));
    takes_ = models.qel().getRetroRecord().takes();
    for (auto take = takes_.rbegin(); take != takes_.rend(); ++take) {
        constexpr double ticksASecond = 200;
        const int seconds = static_cast<int>(static_cast<double>(take->ticks) / ticksASecond);
        const QString began =
            take->start == 0 ? tr("earlier")
                             : QLocale().toString(QDateTime::fromMSecsSinceEpoch(take->start), QLocale::ShortFormat);
        list_->addItem(tr("%1   %2:%3   %4 notes")
                           .arg(began)
                           .arg(seconds / 60)
                           .arg(seconds % 60, 2, 10, QLatin1Char('0'))
                           .arg(take->notes));
    }
    list_->setCurrentRow(0);
    all->addWidget(list_, 1);
    result_ = new QLabel(takes_.empty() ? tr("Nothing has been recorded yet.") : QString(), this);
    result_->setWordWrap(true);
    all->addWidget(result_);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Save)->setEnabled(!takes_.empty());
    connect(buttons, &QDialogButtonBox::accepted, this, &TakeDialog::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    all->addWidget(buttons);
    resize(grid(90), grid(60));
}

void TakeDialog::save() {
    const int row = list_->currentRow();
    const QString file = QFileDialog::getSaveFileName(this, tr("Save the take"), QDir::homePath() + "/take.mid",
                                                      tr("MIDI files (*.mid)"));
    if (row < 0 || file.isEmpty()) {
        return;
    }
    const std::u8string path(reinterpret_cast<const char8_t*>(file.toUtf8().constData()));
    const auto saved = models_.qel().getRetroRecord().save(std::filesystem::path(path), row + 1);
    result_->setText(saved ? tr("%1 notes are saved.").arg(saved.value().notes)
                           : QString::fromStdString(saved.fault().text()));
}

} // namespace Desktop
