#include "desktop/PanelArea.h"

#include "desktop/Palette.h"
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
#include "desktop/panels/ZonesPanel.h"

#include <QHBoxLayout>
#include <QSettings>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>
#include <utility>

namespace Desktop {

using Gui::ChangedSetting;
using Gui::Panel;

namespace {

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

constexpr int rowOfDisplay = 1;
constexpr int dragMilliseconds = 500; // without a further move, a drag has ended

} // namespace

PanelArea::PanelArea(Models& models, std::function<void(Panel, bool)> noteShowing, QWidget* parent)
    : QWidget(parent), models_(models), noteShowing_(std::move(noteShowing)) {
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    makeButtons();
    rows_ = new QSplitter(Qt::Vertical, this);
    rows_->setChildrenCollapsible(false);
    rows_->setHandleWidth(grid(2));
    rows_->setContentsMargins(grid(3), grid(1), grid(3), grid(2));
    all->addWidget(rows_, 1);
    makePanels();
    for (const Panel each : shownAtFirst) {
        wanted_[static_cast<std::size_t>(each)] = true;
    }
    storing_.setSingleShot(true);
    storing_.setInterval(dragMilliseconds);
    connect(&storing_, &QTimer::timeout, this, &PanelArea::storeDisplayHeight);
    connect(rows_, &QSplitter::splitterMoved, this, [this] { storing_.start(); });
    connect(&models.settings, &SettingsModel::settingChanged, this, [this](ChangedSetting setting, int) {
        if (setting == ChangedSetting::displayHeight) {
            fitDisplay();
        }
    });
    arrange();
}

void PanelArea::makeButtons() {
    auto* const row = new QWidget(this);
    auto* const buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(grid(3), grid(2), grid(3), grid(1));
    buttons->setSpacing(grid(1));
    for (const ButtonOf& each : panelButtons) {
        auto* const button = new QPushButton(tr(each.text), row);
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
    layout()->addWidget(row);
}

void PanelArea::makePanels() {
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
    addPanel(controls_, rowOfDisplay);
    addPanel(new OscillatorsPanel(models_, this), rowOfDisplay);
    addPanel(new JoystickPanel(models_, this), rowOfDisplay);
    display_ = new DisplayPanel(models_, this);
    addPanel(display_, rowOfDisplay);
    help_ = new HelpPanel(models_, this);
    addPanel(help_, rowOfDisplay);
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
        rowSplitters_[1]->setStretchFactor(i, rowSplitters_[1]->widget(i) == display_ ? ofTheList : 2);
    }
    rowSplitters_[1]->setSizes({200, 200, 200, 240, 160});
}

void PanelArea::addPanel(PanelFrame* frame, int row) {
    panels_[static_cast<std::size_t>(frame->panel())] = frame;
    rowSplitters_[static_cast<std::size_t>(row)]->addWidget(frame);
    connect(frame, &PanelFrame::closeAsked, this, [this, frame] { showPanel(frame->panel(), false); });
    connect(frame, &PanelFrame::helpAsked, this, [this](const QString& page) {
        showPanel(Panel::help, true);
        help_->openPage(page);
    });
}

void PanelArea::arrange() {
    for (std::size_t i = 0; i < Gui::panelCount; ++i) {
        if (buttons_[i] != nullptr) {
            buttons_[i]->setChecked(wanted_[i]);
        }
        if (panels_[i] != nullptr) {
            panels_[i]->setVisible(wanted_[i]);
        }
        noteShowing_(static_cast<Panel>(i), wanted_[i]);
    }
    output_->showControllers(isShowing(Panel::cc));
    for (QSplitter* const row : rowSplitters_) {
        bool any = false;
        for (int i = 0; i < row->count(); ++i) {
            any = any || !row->widget(i)->isHidden();
        }
        row->setVisible(any);
    }
    emit arranged();
}

void PanelArea::showPanel(Panel panel, bool on) {
    if (panel >= Panel::count) {
        return;
    }
    wanted_[static_cast<std::size_t>(panel)] = on;
    if (panel == Panel::cc && on) { // the list stands in the output panel
        wanted_[static_cast<std::size_t>(Panel::output)] = true;
    }
    arrange();
}

bool PanelArea::isShowing(Panel panel) const {
    return panel < Panel::count && wanted_[static_cast<std::size_t>(panel)];
}

std::vector<PanelFrame*> PanelArea::withPresets() const {
    std::vector<PanelFrame*> some;
    std::copy_if(panels_.begin(), panels_.end(), std::back_inserter(some),
                 [](const PanelFrame* each) { return each != nullptr && each->hasPresets(); });
    return some;
}

std::vector<Panel> PanelArea::inOrder() {
    std::vector<Panel> all;
    for (const ButtonOf& each : panelButtons) {
        all.push_back(each.panel);
    }
    return all;
}

// State. ---------------------------------------------------------------------------------------------------------

void PanelArea::restore(const QSettings& state) {
    if (state.contains("panels")) {
        const QStringList shown = state.value("panels").toStringList();
        for (std::size_t i = 0; i < Gui::panelCount; ++i) {
            wanted_[i] = shown.contains(QString::fromLatin1(Gui::panelNames[i].data()));
        }
        wanted_[static_cast<std::size_t>(Panel::system)] = true; // the way to everything else
    }
    arrange();
    isFitted_ = rows_->restoreState(state.value("rows").toByteArray());
    for (std::size_t i = 0; i < rowSplitters_.size(); ++i) {
        rowSplitters_[i]->restoreState(state.value(QStringLiteral("row%1").arg(i)).toByteArray());
    }
    arrange();
}

void PanelArea::save(QSettings& state) const {
    QStringList shown;
    for (std::size_t i = 0; i < Gui::panelCount; ++i) {
        if (wanted_[i]) {
            shown << QString::fromLatin1(Gui::panelNames[i].data());
        }
    }
    state.setValue("panels", shown);
    state.setValue("rows", rows_->saveState());
    for (std::size_t i = 0; i < rowSplitters_.size(); ++i) {
        state.setValue(QStringLiteral("row%1").arg(i), rowSplitters_[i]->saveState());
    }
}

void PanelArea::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!std::exchange(isFitted_, true)) {
        QTimer::singleShot(0, this, &PanelArea::fitDisplay); // once everything has its place
    }
}

void PanelArea::fitDisplay() {
    if (!display_->isVisible()) {
        return;
    }
    QList<int> sizes = rows_->sizes();
    const int missing = models_.settings.value(ChangedSetting::displayHeight) - display_->listHeight();
    sizes[rowOfDisplay] = std::max(1, sizes[rowOfDisplay] + missing);
    sizes[0] = std::max(1, sizes[0] - missing);
    rows_->setSizes(sizes);
}

void PanelArea::storeDisplayHeight() {
    if (display_->isVisible() && display_->listHeight() != models_.settings.value(ChangedSetting::displayHeight)) {
        models_.settings.set(ChangedSetting::displayHeight, display_->listHeight());
    }
}

} // namespace Desktop
