#include "desktop/panels/PanelFrame.h"

#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/models/PresetNames.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/widgets/MenuButton.h"

#include <QMessageBox>
#include <QPainter>
#include <utility>

namespace Desktop {

PanelFrame::PanelFrame(Gui::Panel panel, const QString& title, const QString& help, Models& models, QWidget* parent)
    : QWidget(parent), panel_(panel), models_(models) {
    setAccessibleName(title);
    setStatusTip(help);
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(grid(3), grid(1), grid(3), grid(2));
    all->setSpacing(grid(3)); // with the line between head and body
    head_ = new QHBoxLayout;
    head_->setSpacing(grid(1));
    title_ = new ElidedLabel(title, this);
    title_->setObjectName("PanelTitle");
    title_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred); // cut only where nothing else gives way
    head_->addWidget(title_);
    head_->addStretch(1);
    presetMenu_ = new QMenu(this);
    presetButton_ =
        new MenuButton(tr("Presets of %1").arg(title), tr("Load, save or delete a preset"), presetMenu_, this);
    presetButton_->hide();
    connect(presetMenu_, &QMenu::aboutToShow, this, &PanelFrame::fillPresetMenu);
    head_->addWidget(presetButton_);
    auto* const helpButton = makeButton("?", tr("Help on %1").arg(title), tr("Opens the manual at this panel"), this);
    const QString page = QString::fromUtf8(Gui::panelNames[static_cast<std::size_t>(panel)].data());
    connect(helpButton, &QToolButton::clicked, this, [this, page] { emit helpAsked(page); });
    head_->addWidget(helpButton);
    auto* const close = makeButton("×", tr("Close %1").arg(title), tr("Hides this panel"), this);
    connect(close, &QToolButton::clicked, this, &PanelFrame::closeAsked);
    head_->addWidget(close);
    all->addLayout(head_);
    body_ = new QVBoxLayout;
    body_->setSpacing(grid(1));
    all->addLayout(body_, 1);
}

QToolButton* PanelFrame::makeButton(const QString& text, const QString& name, const QString& help, QWidget* parent) {
    auto* const button = new QToolButton(parent);
    button->setObjectName("Flat");
    button->setText(text);
    button->setAccessibleName(name);
    button->setStatusTip(help);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void PanelFrame::addHeadWidget(QWidget* widget) {
    head_->insertWidget(head_->count() - 3, widget);
}

void PanelFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Desktop::palette().line, 1));
    painter.setBrush(Desktop::palette().panel);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 7, 7);
    const double below = head_->geometry().bottom() + grid(1) + 0.5;
    painter.drawLine(QPointF(1, below), QPointF(width() - 1, below));
}

void PanelFrame::setPresets(PresetAccess access) {
    presets_ = std::move(access);
    presetButton_->show();
    showPresetName();
}

void PanelFrame::showPresetName() {
    const QString name = QString::fromStdString(presetName());
    presetButton_->setValue(name.isEmpty() ? tr("preset") : name);
}

std::string PanelFrame::presetName() const {
    return presets_.current ? presets_.current() : std::string();
}

void PanelFrame::loadPreset(const std::string& name) {
    if (presets_.load) {
        presets_.load(name);
    }
}

void PanelFrame::savePreset(const std::string& name) {
    if (presets_.save) {
        presets_.save(name);
    }
}

void PanelFrame::askToSavePreset() {
    QStringList files;
    for (const QString& name : presetNames(models_, presets_.folder)) {
        if (isPresetFile(models_, presets_.folder, name)) {
            files << name;
        }
    }
    PresetDialog dialog(title(), QString::fromStdString(presetName()), files,
                        presets_.elements ? presets_.elements() : std::vector<PresetElement>{}, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const std::string name = dialog.name().toStdString();
    const std::vector<int> chosen = dialog.chosen();
    chosen.empty() ? savePreset(name) : presets_.saveChosen(name, chosen);
}

void PanelFrame::askToDeletePreset(const QString& name) {
    QMessageBox box(
        QMessageBox::NoIcon, tr("Delete a preset"),
        tr("Delete the preset “%1” of %2? That cannot be undone. Programs that were saved with it will have "
           "the default in its place.")
            .arg(name, title()),
        QMessageBox::Yes | QMessageBox::No, this);
    box.setDefaultButton(QMessageBox::No);
    if (box.exec() == QMessageBox::Yes) {
        presets_.remove(name.toStdString());
    }
}

void PanelFrame::fillPresetMenu() {
    presetMenu_->clear();
    const QStringList names = presetNames(models_, presets_.folder);
    for (const QString& name : names) {
        QAction* const action = presetMenu_->addAction(name, this, [this, name] { loadPreset(name.toStdString()); });
        action->setCheckable(true);
        action->setChecked(name.toStdString() == presetName());
    }
    presetMenu_->addSeparator();
    if (presets_.save) {
        presetMenu_->addAction(tr("Save as…"), this, &PanelFrame::askToSavePreset);
    }
    if (presets_.remove) {
        QMenu* const remove = presetMenu_->addMenu(tr("Delete"));
        for (const QString& name : names) {
            if (isPresetFile(models_, presets_.folder, name)) {
                remove->addAction(name, this, [this, name] { askToDeletePreset(name); });
            }
        }
        remove->setEnabled(!remove->isEmpty());
    }
}

} // namespace Desktop
