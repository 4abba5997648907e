#include "desktop/MainWindow.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/Backup.h"
#include "desktop/HelpLine.h"
#include "desktop/Palette.h"
#include "desktop/TabOrder.h"
#include "desktop/models/Models.h"
#include "desktop/panels/HelpPanel.h"
#include "desktop/panels/KeysPanel.h"
#include "desktop/panels/SystemBar.h"
#include "desktop/widgets/ValueInstrument.h"
#include "gui/QelGui.h"
#include "platform/PathText.h"
#include "values/Rect.h"

#include <QApplication>
#include <QCloseEvent>
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

} // namespace

MainWindow::MainWindow(Models& models, std::function<void(Panel, bool)> noteShowing) : models_(models) {
    setObjectName("MainWindow");
    setWindowTitle("Tembrel");
    setFocusPolicy(Qt::ClickFocus);
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    bar_ = new SystemBar(models, this);
    all->addWidget(bar_);
    area_ = new PanelArea(models, std::move(noteShowing), this);
    all->addWidget(area_, 1);
    connect(area_, &PanelArea::arranged, this, [this] { bar_->setVisible(isShowing(Panel::system)); });
    helpLine_ = new HelpLine(this);
    all->addWidget(helpLine_);
    dialogs_ = std::make_unique<WindowDialogs>(models, *this, area_->withPresets(),
                                               [this](const QString& text) { showHelp(text); });
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
    backup_.setInterval(minute);
    connect(&backup_, &QTimer::timeout, this, &MainWindow::backUp);
    connect(&models.edits, &QUndoStack::cleanChanged, this, [this](bool clean) {
        if (clean) {
            dropBackup(models_);
        }
    });
    backup_.start();
    resize(grid(330), grid(215));
}

MainWindow::~MainWindow() = default;

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
    on(QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); }); // on Windows the toolkit's Quit has no key
    on(QKeySequence(Qt::CTRL | Qt::Key_P), [this] { bar_->showProgramMenu(); });
    int number = 1;
    for (const Panel panel : PanelArea::inOrder()) {
        on(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + number++ % 10)),
           [this, panel] { togglePanel(panel); });
    }
}

void MainWindow::togglePanel(Panel panel) {
    showPanel(panel, !isShowing(panel));
}

void MainWindow::showHelp(const QString& text) {
    helpLine_->showText(text);
    if (area_->help().isVisible() && !text.isEmpty()) {
        area_->help().showText(text);
    }
}

void MainWindow::showFault(const QString& text) {
    helpLine_->showFault(text);
    emit models_.program.faultSaid(text);
}

void MainWindow::showNews(const HostNews& news) {
    for (const std::string& fault : news.faults) {
        showFault(QString::fromStdString(fault));
    }
    helpLine_->showStatus(news.status);
}

void MainWindow::openSetup() {
    dialogs_->openSetup([this](const QString& name) { setPaletteName(name); });
}

void MainWindow::backUp() {
    if (!models_.edits.isClean()) {
        takeBackup(models_);
    }
}

void MainWindow::panic() {
    models_.backend().postResetQel();
    models_.playing.clear();
    keys().refreshDown();
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
    area_->restore(state);
    applyFlags();
}

void MainWindow::saveState() const {
    QSettings state(stateFile(), QSettings::IniFormat);
    area_->save(state);
    state.setValue("palette", paletteName());
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
