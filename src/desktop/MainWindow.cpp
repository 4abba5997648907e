#include "desktop/MainWindow.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/Backup.h"
#include "desktop/Palette.h"
#include "desktop/TabOrder.h"
#include "desktop/dialogs/FileDialogs.h"
#include "desktop/dialogs/SetupDialog.h"
#include "desktop/dialogs/TakeDialog.h"
#include "desktop/models/Models.h"
#include "desktop/panels/ControlsPanel.h"
#include "desktop/panels/DisplayPanel.h"
#include "desktop/panels/HelpPanel.h"
#include "desktop/panels/JoystickPanel.h"
#include "desktop/panels/KeysPanel.h"
#include "desktop/panels/LayersPanel.h"
#include "desktop/panels/MidiInputPanel.h"
#include "desktop/panels/OscillatorsPanel.h"
#include "desktop/panels/OutputPanel.h"
#include "desktop/panels/SystemBar.h"
#include "desktop/panels/ZonesPanel.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/widgets/ValueInstrument.h"
#include "gui/QelGui.h"
#include "platform/PathText.h"
#include "values/Rect.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QPainter>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QStatusTipEvent>
#include <QVBoxLayout>

namespace Desktop {

using Gui::ChangedSetting;
using Gui::Panel;

namespace {

constexpr int minute = 60000;
constexpr int borderWidth = 2;

struct ButtonOf {
    Panel panel;
    const char* text;
};
constexpr ButtonOf panelButtons[]{{Panel::computerInput, "Keys"},     {Panel::control, "Controls"},
                                  {Panel::layer, "Layers"},           {Panel::zone, "Zones"},
                                  {Panel::oscillator, "Oscillators"}, {Panel::midiInput, "MIDI in"},
                                  {Panel::joystick, "Joystick"},      {Panel::display, "Display"},
                                  {Panel::output, "Output"},          {Panel::help, "Help"}};

constexpr Panel shownAtFirst[]{Panel::system, Panel::computerInput, Panel::control,
                               Panel::layer,  Panel::display,       Panel::output};

} // namespace

MainWindow::MainWindow(Models& models, std::function<void(Panel, bool)> noteShowing)
    : models_(models), noteShowing_(std::move(noteShowing)) {
    setObjectName("MainWindow");
    setWindowTitle("Tembrel");
    setFocusPolicy(Qt::ClickFocus);
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    bar_ = new SystemBar(models, this);
    all->addWidget(bar_);
    buttonRow_ = new QWidget(this);
    auto* const buttons = new QHBoxLayout(buttonRow_);
    buttons->setContentsMargins(grid(3), grid(2), grid(3), grid(1));
    buttons->setSpacing(grid(1));
    for (const ButtonOf& each : panelButtons) {
        auto* const button = new QPushButton(tr(each.text), buttonRow_);
        button->setObjectName("PanelButton");
        button->setCheckable(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(tr("Panel %1").arg(tr(each.text)));
        button->setStatusTip(tr("Shows or hides the panel %1").arg(tr(each.text)));
        connect(button, &QPushButton::clicked, this, [this, panel = each.panel](bool on) { showPanel(panel, on); });
        buttons->addWidget(button);
        buttons_[static_cast<std::size_t>(each.panel)] = button;
    }
    buttons->addStretch(1);
    all->addWidget(buttonRow_);
    rows_ = new QSplitter(Qt::Vertical, this);
    rows_->setChildrenCollapsible(false);
    rows_->setHandleWidth(grid(2));
    rows_->setContentsMargins(grid(3), grid(1), grid(3), grid(2));
    all->addWidget(rows_, 1);
    auto* const line = new QWidget(this);
    line->setObjectName("HelpLine");
    line->setAttribute(Qt::WA_StyledBackground);
    auto* const lineBox = new QHBoxLayout(line);
    lineBox->setContentsMargins(grid(3), grid(1), grid(3), grid(1));
    helpText_ = new ElidedLabel(line);
    helpText_->setObjectName("Dim");
    helpText_->setAccessibleName(tr("Help line"));
    helpText_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lineBox->addWidget(helpText_, 1);
    status_ = new QLabel(line);
    status_->setAccessibleName(tr("Status"));
    status_->setStatusTip(
        tr("What an event takes from its arrival to its being played, by how much that differs, the MIDI "
           "system, and the notes that sound"));
    lineBox->addWidget(status_);
    all->addWidget(line);
    buildPanels();
    buildShortcuts();
    connect(bar_, &SystemBar::setupAsked, this, &MainWindow::openSetup);
    connect(bar_, &SystemBar::saveAsked, this, &MainWindow::openSave);
    connect(bar_, &SystemBar::loadAsked, this, &MainWindow::openLoad);
    connect(bar_, &SystemBar::importAsked, this, &MainWindow::openImport);
    connect(bar_, &SystemBar::takesAsked, this, &MainWindow::openTake);
    connect(bar_, &SystemBar::takeAsked, this, &MainWindow::saveTakeFromLast);
    bar_->setLeaving([this] { return askAboutUnsaved(); });
    connect(&models.program, &ProgramModel::saved, this, [this] { showHelp(tr("Saved.")); });
    connect(&models.keptEdits, &KeptEdits::kept, this,
            [this](const QString& file) { showHelp(tr("What was not saved is kept as %1.").arg(file)); });
    connect(&models.program, &ProgramModel::imported, this, [this] { showHelp(tr("Imported.")); });
    connect(bar_, &SystemBar::panicAsked, this, &MainWindow::panic);
    const auto title = [this] {
        setWindowTitle(
            QStringLiteral("%1%2 – Tembrel").arg(models_.program.title(), models_.edits.isClean() ? "" : " *"));
    };
    connect(&models.program, &Model::changed, this, title);
    connect(&models.edits, &QUndoStack::cleanChanged, this, title);
    connect(&models.settings, &SettingsModel::settingChanged, this, [this](ChangedSetting setting, int value) {
        if (setting == ChangedSetting::alwaysOnTop || setting == ChangedSetting::dockToBottomEdge ||
            setting == ChangedSetting::useSkinBorder) {
            applyFlags();
        } else if (setting == ChangedSetting::mouseSensitivity) {
            ValueInstrument::setSensitivity(value);
        }
    });
    ValueInstrument::setSensitivity(models.settings.value(ChangedSetting::mouseSensitivity));
    for (const Panel each : shownAtFirst) {
        wanted_[static_cast<std::size_t>(each)] = true;
    }
    backup_.setInterval(minute);
    connect(&backup_, &QTimer::timeout, this, &MainWindow::backUp);
    connect(&models.edits, &QUndoStack::cleanChanged, this, [this](bool clean) {
        if (clean) {
            dropBackup(models_);
        }
    });
    backup_.start();
    resize(grid(330), grid(215));
    arrange();
}

MainWindow::~MainWindow() = default;

void MainWindow::buildPanels() {
    for (int row = 0; row < 3; ++row) {
        auto* const splitter = new QSplitter(Qt::Horizontal, rows_);
        splitter->setChildrenCollapsible(false);
        splitter->setHandleWidth(grid(2));
        rowSplitters_.push_back(splitter);
        rows_->addWidget(splitter);
    }
    keys_ = new KeysPanel(models_, this);
    addPanel(keys_, 0);
    addPanel(new LayersPanel(models_, this), 0);
    addPanel(new ZonesPanel(models_, this), 0);
    addPanel(new MidiInputPanel(models_, this), 0);
    controls_ = new ControlsPanel(models_, this);
    addPanel(controls_, 1);
    addPanel(new OscillatorsPanel(models_, this), 1);
    addPanel(new JoystickPanel(models_, this), 1);
    addPanel(new DisplayPanel(models_, this), 1);
    help_ = new HelpPanel(models_, this);
    addPanel(help_, 1);
    output_ = new OutputPanel(models_, this);
    addPanel(output_, 2);
    connect(output_, &OutputPanel::controllersAsked, this, [this](bool on) { showPanel(Panel::cc, on); });
    rows_->setStretchFactor(0, 5);
    rows_->setStretchFactor(1, 5);
    rows_->setStretchFactor(2, 3);
    rowSplitters_[0]->setStretchFactor(0, 3);
    rowSplitters_[0]->setStretchFactor(1, 2);
    rowSplitters_[0]->setSizes({300, 200, 140});
    for (int i = 0; i < rowSplitters_[1]->count(); ++i) {
        constexpr int ofTheList = 3;
        rowSplitters_[1]->setStretchFactor(i, rowSplitters_[1]->widget(i) == panel(Panel::display) ? ofTheList : 2);
    }
    rowSplitters_[1]->setSizes({200, 200, 200, 240, 160});
}

void MainWindow::addPanel(PanelFrame* frame, int row) {
    panels_[static_cast<std::size_t>(frame->panel())] = frame;
    rowSplitters_[static_cast<std::size_t>(row)]->addWidget(frame);
    connect(frame, &PanelFrame::closeAsked, this, [this, frame] { showPanel(frame->panel(), false); });
    connect(frame, &PanelFrame::helpAsked, this, [this](const QString& page) {
        showPanel(Panel::help, true);
        help_->openPage(page);
    });
}

void MainWindow::buildShortcuts() {
    const auto on = [this](const QKeySequence& keys, auto work) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, work);
    };
    on(QKeySequence::Undo, [this] { models_.edits.undo(); });
    on(QKeySequence::Redo, [this] { models_.edits.redo(); });
    on(QKeySequence(Qt::CTRL | Qt::Key_Y), [this] { models_.edits.redo(); });
    on(QKeySequence::Save, [this] { openSave(); });
    on(QKeySequence::Open, [this] { openLoad(); });
    on(QKeySequence(Qt::CTRL | Qt::Key_Comma), [this] { openSetup(); });
    on(QKeySequence::Quit, [this] { close(); });
    on(QKeySequence(Qt::CTRL | Qt::Key_P), [this] { bar_->showProgramMenu(); });
    int number = 1;
    for (const ButtonOf& each : panelButtons) {
        on(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + number++ % 10)),
           [this, panel = each.panel] { togglePanel(panel); });
    }
}

void MainWindow::arrange() {
    for (std::size_t i = 0; i < Gui::panelCount; ++i) {
        if (buttons_[i] != nullptr) {
            buttons_[i]->setChecked(wanted_[i]);
        }
        if (panels_[i] != nullptr) {
            panels_[i]->setVisible(wanted_[i]);
        }
        noteShowing_(static_cast<Panel>(i), wanted_[i]);
    }
    bar_->setVisible(wanted_[static_cast<std::size_t>(Panel::system)]);
    output_->showControllers(wanted_[static_cast<std::size_t>(Panel::cc)]);
    for (QSplitter* const row : rowSplitters_) {
        bool any = false;
        for (int i = 0; i < row->count(); ++i) {
            any = any || !row->widget(i)->isHidden();
        }
        row->setVisible(any);
    }
}

void MainWindow::showPanel(Panel panel, bool on) {
    if (panel >= Panel::count) {
        return;
    }
    wanted_[static_cast<std::size_t>(panel)] = on;
    if (panel == Panel::cc && on) { // the list stands in the output panel
        wanted_[static_cast<std::size_t>(Panel::output)] = true;
    }
    arrange();
}

void MainWindow::togglePanel(Panel panel) {
    showPanel(panel, !isShowing(panel));
}

bool MainWindow::isShowing(Panel panel) const {
    return panel < Panel::count && wanted_[static_cast<std::size_t>(panel)];
}

void MainWindow::showHelp(const QString& text) {
    helpText_->setText(text);
    if (help_->isVisible() && !text.isEmpty()) {
        help_->showText(text);
    }
}

void MainWindow::showFault(const QString& text) {
    helpText_->setText("⚠ " + text);
    emit models_.program.faultSaid(text);
}

void MainWindow::showNews(const HostNews& news) {
    for (const std::string& fault : news.faults) {
        showFault(QString::fromStdString(fault));
    }
    const Gui::HostStatus& status = news.status;
    QStringList parts;
    if (status.latencyMs >= 0) {
        parts << tr("latency %1 ms").arg(status.latencyMs, 0, 'f', 1)
              << tr("jitter %1").arg(status.jitterMs, 0, 'f', 1);
    }
    parts << QString::fromStdString(status.system)
          << (status.heldNotes == 1 ? tr("1 note held") : tr("%1 notes held").arg(status.heldNotes));
    const QString text = parts.join(" · ");
    if (text != status_->text()) {
        status_->setText(text);
    }
}

void MainWindow::openSetup() {
    SetupDialog dialog(models_, this);
    connect(&dialog, &SetupDialog::paletteChosen, this, &MainWindow::setPaletteName);
    dialog.exec();
}

bool MainWindow::openSave() {
    QStringList titles;
    std::vector<PanelFrame*> owners;
    for (PanelFrame* const each : panels_) {
        if (each != nullptr && each->hasPresets()) {
            titles << each->title();
            owners.push_back(each);
        }
    }
    SaveDialog dialog(models_, titles, this);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    if (const int part = dialog.presetAsked(); part >= 0) {
        owners[static_cast<std::size_t>(part)]->askToSavePreset();
    }
    return models_.edits.isClean();
}

bool MainWindow::openLoad() {
    return askAboutUnsaved() && loadFile(models_, this);
}

void MainWindow::openImport() {
    if (askAboutUnsaved()) {
        importFile(models_, this);
    }
}

void MainWindow::openTake() {
    TakeDialog(models_, this).exec();
}

void MainWindow::saveTakeFromLast(int fromLast) {
    if (const QString came = saveTake(models_, fromLast, this); !came.isEmpty()) {
        showHelp(came);
    }
}

void MainWindow::backUp() {
    if (!models_.edits.isClean()) {
        takeBackup(models_);
    }
}

void MainWindow::panic() {
    models_.backend().postResetQel();
    models_.playing.clear();
    keys_->refreshDown();
}

bool MainWindow::askAboutUnsaved() {
    if (models_.edits.isClean()) {
        return true;
    }
    QMessageBox box(QMessageBox::NoIcon, tr("Unsaved changes"),
                    tr("The program “%1” has changes that are not saved.").arg(models_.program.title()),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    const int answer = box.exec();
    if (answer == QMessageBox::Save) {
        return openSave();
    }
    return answer == QMessageBox::Discard;
}

void MainWindow::setPaletteName(const QString& name) {
    usePalette(name);
    const auto all = findChildren<QWidget*>();
    for (QWidget* const each : all) {
        each->update();
    }
    emit models_.keys.changed(); // faces carry colours
    emit models_.layers.changed();
    emit models_.controls.changed();
}

bool MainWindow::event(QEvent* event) {
    if (event->type() == QEvent::StatusTip) {
        showHelp(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    }
    return QWidget::event(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!isClosed_ && !askAboutUnsaved()) {
        event->ignore();
        return;
    }
    if (!isClosed_) {
        isClosed_ = true;
        saveState();
        dropBackup(models_);
        emit closing();
    }
    event->accept();
}

bool MainWindow::focusNextPrevChild(bool next) {
    return focusNextByTab(*this, next);
}

void MainWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Desktop::palette().ground);
    if (models_.settings.isOn(ChangedSetting::useSkinBorder)) {
        painter.setPen(QPen(Desktop::palette().line, borderWidth));
        const double half = borderWidth / 2.0;
        painter.drawRect(QRectF(rect()).adjusted(half, half, -half, -half));
    }
}

// State. ---------------------------------------------------------------------------------------------------------

QString MainWindow::stateFile() const {
    return QString::fromStdString(Platform::textOf(models_.qel().getApplicationData() / "window.ini"));
}

void MainWindow::restoreState() {
    QSettings state(stateFile(), QSettings::IniFormat);
    if (state.contains("panels")) {
        const QStringList shown = state.value("panels").toStringList();
        for (std::size_t i = 0; i < Gui::panelCount; ++i) {
            wanted_[i] = shown.contains(QString::fromLatin1(Gui::panelNames[i].data()));
        }
        wanted_[static_cast<std::size_t>(Panel::system)] = true; // the way to everything else
    }
    setPaletteName(state.value("palette", "Dark").toString());
    const WindowsLib::Rect place = models_.gui().getRegistrySettings().getLastWindowPosition();
    const QRect rect(QPoint(place.left, place.top), QPoint(place.right - 1, place.bottom - 1));
    if (place != WindowsLib::Rect{-1, -1, -1, -1} && rect.width() > grid(40)) {
        for (const QScreen* const screen : QGuiApplication::screens()) {
            if (screen->availableGeometry().intersects(rect)) {
                setGeometry(rect);
                break;
            }
        }
    }
    arrange();
    rows_->restoreState(state.value("rows").toByteArray());
    for (std::size_t i = 0; i < rowSplitters_.size(); ++i) {
        rowSplitters_[i]->restoreState(state.value(QStringLiteral("row%1").arg(i)).toByteArray());
    }
    arrange();
    applyFlags();
}

void MainWindow::saveState() const {
    QSettings state(stateFile(), QSettings::IniFormat);
    QStringList shown;
    for (std::size_t i = 0; i < Gui::panelCount; ++i) {
        if (wanted_[i]) {
            shown << QString::fromLatin1(Gui::panelNames[i].data());
        }
    }
    state.setValue("panels", shown);
    state.setValue("palette", paletteName());
    state.setValue("rows", rows_->saveState());
    for (std::size_t i = 0; i < rowSplitters_.size(); ++i) {
        state.setValue(QStringLiteral("row%1").arg(i), rowSplitters_[i]->saveState());
    }
    const QRect now = dockedNow_ ? undocked_ : geometry();
    models_.backend().postSetLastWindowPosition({now.left(), now.top(), now.right() + 1, now.bottom() + 1});
}

void MainWindow::applyFlags() {
    const bool top = models_.settings.isOn(ChangedSetting::alwaysOnTop);
    if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) != top) {
        const bool shown = isVisible();
        setWindowFlag(Qt::WindowStaysOnTopHint, top);
        if (shown) {
            show();
        }
    }
    const bool dock = models_.settings.isOn(ChangedSetting::dockToBottomEdge);
    if (dock && screen() != nullptr) {
        if (!dockedNow_) {
            undocked_ = geometry();
        }
        const QRect free = screen()->availableGeometry();
        const int tall = std::min(height(), free.height());
        setGeometry(free.left(), free.bottom() + 1 - tall, free.width(), tall);
    } else if (dockedNow_) {
        setGeometry(undocked_);
    }
    dockedNow_ = dock;
    const int border = models_.settings.isOn(ChangedSetting::useSkinBorder) ? borderWidth : 0;
    layout()->setContentsMargins(border, border, border, border);
    update();
}

} // namespace Desktop
