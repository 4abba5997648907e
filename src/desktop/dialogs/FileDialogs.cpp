#include "desktop/dialogs/FileDialogs.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/widgets/MenuBox.h"
#include "gui/QelGui.h"
#include "platform/PathText.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

namespace Desktop {

namespace {

QString folderOf(Models& models, const QString& name) {
    const QString path = QString::fromStdString(Platform::textOf(models.qel().getApplicationData())) + "/" + name;
    QDir().mkpath(path);
    return path;
}

} // namespace

SaveDialog::SaveDialog(Models& models, const QStringList& parts, QWidget* parent) : QDialog(parent), models_(models) {
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
    slot_ = new MenuBox(this);
    slot_->setAccessibleName(tr("Slot of the bank"));
    const auto& programs = models.program.bank().programs;
    for (std::size_t i = 0; i < programs.size(); ++i) {
        slot_->addItem(
            QStringLiteral("%1  %2").arg(i + 1, 3, 10, QLatin1Char('0')).arg(QString::fromStdString(programs[i])));
    }
    slot_->setCurrentIndex(models.program.program().slot);
    slot_->setPlaceholderText(tr("there is no bank"));
    const auto below = [all](QWidget* widget) { // the way that it belongs to
        auto* const row = new QHBoxLayout;
        row->setContentsMargins(grid(5), 0, 0, 0);
        row->addWidget(widget);
        all->addLayout(row);
    };
    below(slot_);
    toProgram_ = way(tr("As a program file …"));
    toBank_ = way(tr("The whole bank, with this program in it, as another file …"));
    toPreset_ = way(tr("A part of it as a preset, all of it or chosen elements …"));
    part_ = new MenuBox(this);
    part_->setAccessibleName(tr("Part that is saved as a preset"));
    part_->addItems(parts);
    below(part_);
    toPreset_->setEnabled(!parts.isEmpty());
    const auto follow = [this] {
        name_->setEnabled(!toPreset_->isChecked());
        slot_->setEnabled(toSlot_->isChecked());
        part_->setEnabled(toPreset_->isChecked());
    };
    for (const QRadioButton* const each : {toSlot_, toProgram_, toBank_, toPreset_}) {
        connect(each, &QRadioButton::toggled, this, follow);
    }
    toSlot_->setEnabled(!programs.empty());
    toBank_->setEnabled(!programs.empty());
    (programs.empty() ? toProgram_ : toSlot_)->setChecked(true);
    follow();
    remark_ = new QLabel(this);
    remark_->setWordWrap(true);
    all->addWidget(remark_);
    all->addStretch(1);
    connect(&models.program, &ProgramModel::saved, this, &SaveDialog::saved);
    connect(&models.program, &ProgramModel::faultSaid, this, [this](const QString& text) {
        isWaiting_ = false;
        remark_->setText(tr("It is not saved: %1").arg(text));
    });
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

int SaveDialog::presetAsked() const {
    return toPreset_->isChecked() ? part_->currentIndex() : -1;
}

void SaveDialog::save() {
    if (toPreset_->isChecked()) {
        return accept();
    }
    QString file;
    if (toProgram_->isChecked()) {
        file = askForFile(tr("Programs (*.prg)"), ".prg");
    } else if (toBank_->isChecked()) {
        file = askForFile(tr("Banks (*.bnk)"), ".bnk");
    }
    if (file.isEmpty() && !toSlot_->isChecked()) {
        return;
    }
    if (name_->text() != QString::fromStdString(models_.program.program().name)) {
        models_.program.rename(name_->text());
    }
    isWaiting_ = true;
    savedEdits_ = models_.edits.index();
    remark_->clear();
    Backend::QelMessageManager& backend = models_.backend();
    const Platform::WindowHandle owner = models_.gui().getWindowHandle();
    if (toSlot_->isChecked()) {
        backend.postSaveToCurrentBank(slot_->currentIndex(), owner);
    } else if (toProgram_->isChecked()) {
        backend.postSaveToProgram(file.toStdString(), owner);
    } else {
        backend.postSaveToBank(file.toStdString(), owner);
    }
}

// Nothing counts as saved before it is.
void SaveDialog::saved() {
    if (isWaiting_) {
        isWaiting_ = false;
        if (models_.edits.index() == savedEdits_) {
            models_.edits.setClean();
        }
        accept();
    }
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

namespace {

struct ImportKind {
    const char* ending;
    const char* filter;
    const char* folder;
    void (Backend::QelMessageManager::*post)(const std::string&, const std::string&, Platform::WindowHandle);
};
constexpr ImportKind importKinds[]{{".bnk", QT_TRANSLATE_NOOP("QObject", "Banks (*.bnk)"), "Banks",
                                    &Backend::QelMessageManager::postImportVersion2Bank},
                                   {".prg", QT_TRANSLATE_NOOP("QObject", "Programs (*.prg)"), "Programs",
                                    &Backend::QelMessageManager::postImportVersion2Program},
                                   {".pst", QT_TRANSLATE_NOOP("QObject", "Presets (*.pst)"), "",
                                    &Backend::QelMessageManager::postImportVersion2Preset}};

} // namespace

void importFile(Models& models, QWidget* parent) {
    const QString source = QFileDialog::getOpenFileName(parent, QObject::tr("Import from version 2"), QDir::homePath(),
                                                        QObject::tr("Banks, programs and presets (*)"));
    if (source.isEmpty()) {
        return;
    }
    // What it is, its name says, or else the one who imports it.
    QStringList filters;
    QString filter;
    QString folder = "Banks";
    for (const ImportKind& kind : importKinds) {
        filters << QObject::tr(kind.filter);
        if (source.endsWith(QLatin1String(kind.ending), Qt::CaseInsensitive)) {
            filter = filters.back();
            folder = QLatin1String(kind.folder);
        }
    }
    const QString start = folderOf(models, folder) + "/" + QFileInfo(source).completeBaseName();
    QString target = QFileDialog::getSaveFileName(parent, QObject::tr("Where the imported file goes"), start,
                                                  filters.join(";;"), &filter);
    if (target.isEmpty()) {
        return;
    }
    const auto isOf = [&](const ImportKind& kind) {
        return target.endsWith(QLatin1String(kind.ending), Qt::CaseInsensitive);
    };
    const ImportKind* kind = std::find_if(std::begin(importKinds), std::end(importKinds), isOf);
    if (kind == std::end(importKinds)) {
        kind = importKinds + std::max<qsizetype>(0, filters.indexOf(filter));
        target += QLatin1String(kind->ending);
    }
    models.edits.clear();
    (models.backend().*kind->post)(source.toStdString(), target.toStdString(), models.gui().getWindowHandle());
}

} // namespace Desktop
