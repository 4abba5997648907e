#include "desktop/panels/SystemBar.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/Palette.h"
#include "desktop/dialogs/TakeDialog.h"
#include "desktop/models/Models.h"
#include "desktop/widgets/MenuButton.h"
#include "desktop/widgets/NumberField.h"
#include "gui/QelGui.h"
#include "platform/PathText.h"
#include "values/SelectType.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>

namespace Desktop {

using Gui::ChangedSetting;

namespace {

constexpr qint64 longestTap = 3000; // milliseconds: slower than 20 beats a minute begins anew
constexpr std::size_t tapsCounted = 6;

// What is chosen, with small letters over it that say of what.
QVBoxLayout* captioned(const QString& caption, QWidget* widget, QWidget* parent) {
    auto* const box = new QVBoxLayout;
    box->setSpacing(0);
    auto* const label = new QLabel(caption, parent);
    label->setObjectName("Caption");
    label->setIndent(grid(2)); // over the text below it
    label->setBuddy(widget);
    box->addWidget(label);
    box->addWidget(widget);
    return box;
}

} // namespace

SystemBar::SystemBar(Models& models, QWidget* parent) : QWidget(parent), models_(models) {
    setObjectName("SystemBar");
    setAttribute(Qt::WA_StyledBackground);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(grid(3), grid(1), grid(3), grid(1));
    row->setSpacing(grid(1));
    const auto gap = [row] { row->addSpacing(grid(2)); };
    const auto button = [&](const QString& text, const QString& name, const QString& help) {
        auto* const made = new QPushButton(text, this);
        made->setAccessibleName(name);
        made->setStatusTip(help);
        made->setFocusPolicy(Qt::TabFocus);
        return made;
    };
    auto* const earlier = button("◂", tr("Previous program"), tr("Changes to the program before this one"));
    connect(earlier, &QPushButton::clicked, this, [this] { leave([this] { models_.program.step(false); }); });
    earlier->setObjectName("Arrow");
    row->addWidget(earlier);
    programMenu_ = new QMenu(this);
    program_ = new MenuButton(tr("Program"), tr("Chooses, renames, saves and loads programs"), programMenu_, this);
    program_->setObjectName("Program");
    program_->setWidths(32, 64);
    program_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    program_->setMaximumWidth(grid(64));
    connect(programMenu_, &QMenu::aboutToShow, this, &SystemBar::fillProgramMenu);
    row->addWidget(program_, 8); // gets room before there is a gap
    auto* const later = button("▸", tr("Next program"), tr("Changes to the program after this one"));
    connect(later, &QPushButton::clicked, this, [this] { leave([this] { models_.program.step(true); }); });
    later->setObjectName("Arrow");
    row->addWidget(later);
    gap();
    bankMenu_ = new QMenu(this);
    bank_ = new MenuButton(tr("Bank"), tr("The bank that the programs are in: chooses another, changes its size"),
                           bankMenu_, this);
    connect(bankMenu_, &QMenu::aboutToShow, this, &SystemBar::fillBankMenu);
    row->addLayout(captioned(tr("BANK"), bank_, this));
    gap();

    tempo_ = new NumberField(this);
    tempo_->setRange(10, 500);
    tempo_->setWheelStep(1);
    tempo_->setScale(1.5);
    tempo_->setFrame(false);
    tempo_->describe(tr("Tempo"), tr("Beats a minute: drag, turn the wheel, or double-click to type"));
    connect(tempo_, &NumberField::moved, this, [this](int value) { models_.settings.setTempo(value); });
    connect(tempo_, &NumberField::letGo, this, [this] { models_.edits.endOfGesture(); });
    row->addLayout(captioned(tr("TEMPO"), tempo_, this));
    auto* const tapButton = button(tr("tap"), tr("Tap the tempo"), tr("Press it on each beat"));
    connect(tapButton, &QPushButton::pressed, this, &SystemBar::tap);
    row->addWidget(tapButton);
    sourceMenu_ = new QMenu(this);
    source_ = new MenuButton(tr("Tempo source"), tr("What sets the tempo: this program or the clock of a MIDI input"),
                             sourceMenu_, this);
    connect(sourceMenu_, &QMenu::aboutToShow, this, &SystemBar::fillTempoMenu);
    row->addLayout(captioned(tr("CLOCK"), source_, this));
    gap();
    outputMenu_ = new QMenu(this);
    output_ =
        new MenuButton(tr("Default output"), tr("Where all goes that names no output of its own"), outputMenu_, this);
    connect(outputMenu_, &QMenu::aboutToShow, this, &SystemBar::fillOutputMenu);
    row->addLayout(captioned(tr("OUTPUT"), output_, this));
    gap();

    thru_ = button(tr("thru"), tr("MIDI thru"), tr("While it is on, what your MIDI devices play goes out again"));
    thru_->setObjectName("Pill");
    thru_->setCheckable(true);
    connect(thru_, &QPushButton::clicked, this,
            [this](bool on) { models_.settings.set(ChangedSetting::midiThru, on); });
    row->addWidget(thru_);
    global_ = button(tr("global keys"), tr("Global keys"),
                     tr("While it is on, the keys play even when another program has the keyboard"));
    global_->setObjectName("Pill");
    global_->setCheckable(true);
    connect(global_, &QPushButton::clicked, this,
            [this](bool on) { models_.settings.set(ChangedSetting::globalKeyboard, on); });
    row->addWidget(global_);
    takeMenu_ = new QMenu(this);
    auto* const take = new MenuButton(
        tr("Take"), tr("What you have played is recorded all the time: save the last stretch"), takeMenu_, this);
    take->setObjectName("Pill");
    take->setFigure("●");
    take->setValue(tr("take"));
    connect(takeMenu_, &QMenu::aboutToShow, this, &SystemBar::fillTakeMenu);
    row->addWidget(take);
    row->addStretch(1);
    auto* const panic =
        button(tr("Panic"), tr("Panic"), tr("Silence: everything that sounds ends. So does Escape, held"));
    panic->setObjectName("Panic");
    connect(panic, &QPushButton::clicked, this, &SystemBar::panicAsked);
    row->addWidget(panic);
    auto* const setup = button("⚙", tr("Set-up"), tr("Ports, display, recording, window"));
    connect(setup, &QPushButton::clicked, this, &SystemBar::setupAsked);
    setup->setObjectName("Arrow");
    row->addWidget(setup);

    connect(&models_.program, &Model::changed, this, &SystemBar::refresh);
    connect(&models_.settings, &Model::changed, this, &SystemBar::refresh);
    connect(&models_.ports, &Model::changed, this, &SystemBar::refresh);
    connect(&models_.edits, &QUndoStack::cleanChanged, this, &SystemBar::refresh);
    refresh();
}

void SystemBar::refresh() {
    const Gui::ProgramInfo& program = models_.program.program();
    program_->setFigure(QStringLiteral("%1").arg(program.slot + 1, 3, 10, QLatin1Char('0')));
    program_->setValue(models_.program.title() + (models_.edits.isClean() ? "" : " *"));
    const std::string& path = models_.program.bank().path;
    const auto slash = path.find_last_of("/\\");
    QString bank = QString::fromStdString(slash == std::string::npos ? path : path.substr(slash + 1));
    bank_->setValue(bank.isEmpty() ? tr("no bank") : bank.replace(".bnk", ""));
    tempo_->setValue(models_.settings.tempo());
    const int source = models_.settings.value(ChangedSetting::tempoSource);
    source_->setValue(source == 0 ? tr("internal") : models_.ports.inputName(source - 1));
    const auto& outputs = models_.ports.outputs();
    const int output = models_.settings.value(ChangedSetting::defaultOutput);
    output_->setValue(outputs.empty() ? tr("none") : models_.ports.outputName(output));
    thru_->setChecked(models_.settings.isOn(ChangedSetting::midiThru));
    global_->setChecked(models_.settings.isOn(ChangedSetting::globalKeyboard) && obstacle_.isEmpty());
}

void SystemBar::setGlobalKeysObstacle(const QString& reason) {
    obstacle_ = reason;
    global_->setEnabled(reason.isEmpty());
    global_->setToolTip(reason);
    if (!reason.isEmpty()) {
        global_->setStatusTip(reason);
        global_->setAccessibleDescription(reason);
    }
    refresh();
}

void SystemBar::tap() {
    if (lastTap_.isValid() && lastTap_.elapsed() < longestTap) {
        taps_.push_back(lastTap_.elapsed());
        if (taps_.size() > tapsCounted) {
            taps_.erase(taps_.begin());
        }
        const qint64 sum = std::accumulate(taps_.begin(), taps_.end(), qint64{0});
        if (sum > 0) {
            models_.settings.setTempo(static_cast<int>((60000 * static_cast<qint64>(taps_.size()) + sum / 2) / sum));
        }
    } else {
        taps_.clear();
        models_.edits.endOfGesture();
    }
    lastTap_.start();
}

void SystemBar::fillProgramMenu() {
    programMenu_->clear();
    const auto& names = models_.program.bank().programs;
    for (std::size_t slot = 0; slot < names.size(); ++slot) {
        const QString name = QString::fromStdString(names[slot]);
        QAction* const action = programMenu_->addAction(
            QStringLiteral("%1  %2").arg(slot + 1, 3, 10, QLatin1Char('0')).arg(name.isEmpty() ? tr("Untitled") : name),
            this, [this, slot] { leave([this, slot] { models_.program.choose(static_cast<int>(slot)); }); });
        action->setCheckable(true);
        action->setChecked(static_cast<int>(slot) == models_.program.program().slot);
    }
    programMenu_->addSeparator();
    programMenu_->addAction(tr("Rename…"), this, [this] {
        bool accepted = false;
        const QString name = QInputDialog::getText(this, tr("Rename the program"), tr("Name of the program:"),
                                                   QLineEdit::Normal, models_.program.title(), &accepted);
        if (accepted) {
            models_.program.rename(name);
        }
    });
    programMenu_->addAction(tr("Save…"), this, &SystemBar::saveAsked);
    programMenu_->addAction(tr("Load…"), this, &SystemBar::loadAsked);
    programMenu_->addAction(tr("Import from version 2…"), this, &SystemBar::importAsked);
}

void SystemBar::leave(const std::function<void()>& how) {
    if (!models_.program.bank().programs.empty() && (!mayLeave_ || mayLeave_())) {
        models_.edits.clear(); // what was unsaved is not wanted
        how();
    }
}

void SystemBar::fillBankMenu() {
    bankMenu_->clear();
    const QDir folder(QString::fromStdString(Platform::textOf(models_.qel().getApplicationData())) + "/Banks");
    for (const QString& file : folder.entryList({"*.bnk"}, QDir::Files, QDir::Name)) {
        const QString path = folder.absoluteFilePath(file);
        QAction* const action = bankMenu_->addAction(file.chopped(4), this, [this, path] {
            if (!mayLeave_ || mayLeave_()) {
                models_.edits.clear();
                models_.backend().postLoadBank(path.toStdString());
            }
        });
        action->setCheckable(true);
        action->setChecked(QFileInfo(path) == QFileInfo(QString::fromStdString(models_.program.bank().path)));
    }
    bankMenu_->addSeparator();
    bankMenu_->addAction(tr("Load…"), this, &SystemBar::loadAsked);
    bankMenu_->addAction(tr("Import from version 2…"), this, &SystemBar::importAsked);
    QAction* const asDefault = bankMenu_->addAction(tr("Start with this bank"), this, [this] {
        models_.backend().postSetDefaultBank(models_.program.bank().path);
    });
    asDefault->setCheckable(true);
    asDefault->setChecked(models_.gui().getRegistrySettings().getDefaultBank() == models_.program.bank().path);
    bankMenu_->addAction(tr("Size…"), this, &SystemBar::askForBankSize)
        ->setEnabled(!models_.program.bank().programs.empty());
}

void SystemBar::askForBankSize() {
    bool accepted = false;
    const int now = static_cast<int>(models_.program.bank().programs.size());
    const int size = QInputDialog::getInt(this, tr("Size of the bank"),
                                          tr("Programs in the bank. Those beyond the new size are lost:"),
                                          std::max(1, now), 1, 128, 1, &accepted);
    if (accepted && (size > models_.program.program().slot || !mayLeave_ || mayLeave_())) {
        models_.backend().postChangeBankSize(size, nullptr);
    }
}

void SystemBar::fillTakeMenu() {
    constexpr int mostInMenu = 8;
    takeMenu_->clear();
    const auto takes = models_.qel().getRetroRecord().takes();
    int fromLast = 0;
    for (auto take = takes.rbegin(); take != takes.rend() && fromLast < mostInMenu; ++take) {
        ++fromLast;
        takeMenu_->addAction(tr("Save %1…").arg(textOf(*take)), this, [this, fromLast] { emit takeAsked(fromLast); });
    }
    if (takes.empty()) {
        takeMenu_->addAction(tr("Nothing has been recorded yet"))->setEnabled(false);
    }
    takeMenu_->addSeparator();
    takeMenu_->addAction(tr("All takes…"), this, &SystemBar::takesAsked);
    takeMenu_->addAction(tr("Save everything…"), this, [this] { emit takeAsked(0); })->setEnabled(!takes.empty());
    QAction* const records = takeMenu_->addAction(tr("Record what is played"), this, [this](bool on) {
        models_.settings.set(ChangedSetting::retroRecordEnabled, on ? 1 : 0);
    });
    records->setCheckable(true);
    records->setChecked(models_.settings.isOn(ChangedSetting::retroRecordEnabled));
}

void SystemBar::fillOutputMenu() {
    outputMenu_->clear();
    const auto& outputs = models_.ports.outputs();
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        QAction* const action = outputMenu_->addAction(QString::fromStdString(outputs[i].name), this, [this, i] {
            models_.settings.set(ChangedSetting::defaultOutput, static_cast<int>(i));
        });
        action->setCheckable(true);
        action->setEnabled(outputs[i].enabled);
        action->setChecked(static_cast<int>(i) == models_.settings.value(ChangedSetting::defaultOutput));
    }
    if (outputs.empty()) {
        outputMenu_->addAction(tr("There is no MIDI output"))->setEnabled(false);
    }
}

void SystemBar::fillTempoMenu() {
    sourceMenu_->clear();
    const auto add = [this](const QString& name, int source) {
        QAction* const action = sourceMenu_->addAction(
            name, this, [this, source] { models_.settings.set(ChangedSetting::tempoSource, source); });
        action->setCheckable(true);
        action->setChecked(source == models_.settings.value(ChangedSetting::tempoSource));
    };
    add(tr("internal"), 0);
    for (std::size_t i = 0; i < models_.ports.inputs().size(); ++i) {
        add(tr("clock of %1").arg(models_.ports.inputName(static_cast<int>(i))), static_cast<int>(i) + 1);
    }
}

void SystemBar::showProgramMenu() {
    program_->showMenu();
}

void SystemBar::showOutputMenu() {
    output_->showMenu();
}

} // namespace Desktop
