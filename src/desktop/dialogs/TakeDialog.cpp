#include "desktop/dialogs/TakeDialog.h"

#include "core/QelIF.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>
#include <filesystem>
#include <optional>

namespace Desktop {

QString textOf(const Backend::Recording::Take& take) {
    constexpr double ticksASecond = 200;
    const int seconds = static_cast<int>(static_cast<double>(take.ticks) / ticksASecond);
    const QString began = take.start == 0
                              ? QObject::tr("earlier")
                              : QLocale().toString(QDateTime::fromMSecsSinceEpoch(take.start), QLocale::ShortFormat);
    return QObject::tr("%1   %2:%3   %4")
        .arg(began)
        .arg(seconds / 60)
        .arg(seconds % 60, 2, 10, QLatin1Char('0'))
        .arg(take.notes == 1 ? QObject::tr("1 note") : QObject::tr("%1 notes").arg(take.notes));
}

QString saveTake(Models& models, int fromLast, QWidget* parent) {
    QString file = QFileDialog::getSaveFileName(
        parent, fromLast == 0 ? QObject::tr("Save everything that is recorded") : QObject::tr("Save the take"),
        QDir::homePath() + "/take.mid", QObject::tr("MIDI files (*.mid)"));
    if (file.isEmpty()) {
        return {};
    }
    if (QFileInfo(file).suffix().isEmpty()) {
        file += ".mid";
    }
    const std::u8string path(reinterpret_cast<const char8_t*>(file.toUtf8().constData()));
    const auto saved = models.qel().getRetroRecord().save(std::filesystem::path(path),
                                                          fromLast == 0 ? std::nullopt : std::optional<int>(fromLast));
    return saved ? QObject::tr("%1 notes are saved in %2.").arg(saved.value().notes).arg(QFileInfo(file).fileName())
                 : QString::fromStdString(saved.fault().text());
}

TakeDialog::TakeDialog(Models& models, QWidget* parent) : QDialog(parent), models_(models) {
    setWindowTitle(tr("Takes"));
    auto* const all = new QVBoxLayout(this);
    all->setSpacing(grid(2));
    auto* const what =
        new QLabel(tr("Everything that is played is recorded. A take ends with five seconds of silence."), this);
    what->setWordWrap(true);
    all->addWidget(what);
    list_ = new QListWidget(this);
    list_->setAccessibleName(tr("Takes, the latest first"));
    all->addWidget(list_, 1);
    result_ = new QLabel(this);
    result_->setWordWrap(true);
    all->addWidget(result_);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    save_ = buttons->addButton(tr("Save the take…"), QDialogButtonBox::ActionRole);
    all_ = buttons->addButton(tr("Save everything…"), QDialogButtonBox::ActionRole);
    all_->setToolTip(tr("Saves all takes in one file; the record then begins anew"));
    const auto saves = [this](int fromLast) {
        if (const QString came = saveTake(models_, fromLast, this); !came.isEmpty()) {
            fill();
            result_->setText(came);
        }
    };
    connect(save_, &QPushButton::clicked, this, [this, saves] { saves(list_->currentRow() + 1); });
    connect(all_, &QPushButton::clicked, this, [saves] { saves(0); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    all->addWidget(buttons);
    resize(grid(100), grid(70));
    fill();
}

void TakeDialog::fill() {
    const std::vector<Backend::Recording::Take> takes = models_.qel().getRetroRecord().takes();
    list_->clear();
    for (auto take = takes.rbegin(); take != takes.rend(); ++take) {
        list_->addItem(textOf(*take));
    }
    list_->setCurrentRow(0);
    save_->setEnabled(!takes.empty());
    all_->setEnabled(!takes.empty());
    result_->setText(takes.empty() ? tr("Nothing has been recorded yet.") : QString());
}

} // namespace Desktop
