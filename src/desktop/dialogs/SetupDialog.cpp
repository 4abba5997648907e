#include "desktop/dialogs/SetupDialog.h"

#include "core/QelMessageManager.h"
#include "desktop/Palette.h"
#include "desktop/models/Models.h"
#include "desktop/widgets/MenuBox.h"
#include "desktop/widgets/NumberField.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QScrollArea>
#include <QTabWidget>

namespace Desktop {

using Gui::ChangedSetting;

SetupDialog::SetupDialog(Models& models, QWidget* parent) : QDialog(parent), models_(models) {
    setWindowTitle(tr("Set-up"));
    auto* const all = new QVBoxLayout(this);
    auto* const tabs = new QTabWidget(this);
    tabs->setAccessibleName(tr("Parts of the set-up"));
    all->addWidget(tabs);
    const auto page = [&](const QString& name) {
        auto* const widget = new QWidget(tabs);
        auto* const layout = new QVBoxLayout(widget);
        layout->setContentsMargins(0, grid(4), 0, 0);
        layout->setSpacing(grid(2));
        tabs->addTab(widget, name);
        return layout;
    };
    const auto labelled = [&](QVBoxLayout& layout, const QString& text, QWidget* widget, const QString& help) {
        auto* const row = new QHBoxLayout;
        row->addWidget(new QLabel(text, this));
        row->addStretch(1);
        row->addWidget(widget);
        widget->setAccessibleName(text);
        widget->setStatusTip(help);
        widget->setToolTip(help);
        layout.addLayout(row);
    };
    auto* const portsTab = page(tr("Ports"));
    output_ = new MenuBox(this);
    connect(output_, &QComboBox::activated, this, [this](int index) {
        models_.settings.set(ChangedSetting::defaultOutput, output_->itemData(index).toInt());
    });
    labelled(*portsTab, tr("Default output"), output_, tr("Where all goes that names no output of its own"));
    auto* const portsArea = new QScrollArea(this);
    portsArea->setWidgetResizable(true);
    portsArea->setFocusPolicy(Qt::NoFocus);
    auto* const portsHolder = new QWidget(portsArea);
    portsPage_ = new QVBoxLayout(portsHolder);
    portsPage_->setContentsMargins(0, 0, 0, 0);
    portsArea->setWidget(portsHolder);
    portsTab->addWidget(portsArea, 1);
    fillPorts();
    connect(&models.ports, &Model::changed, this, &SetupDialog::fillPorts);
    connect(&models.settings, &Model::changed, this, &SetupDialog::fillOutputs);
    auto* const display = page(tr("Display"));
    addCheck(*display, tr("List incoming events"), {}, ChangedSetting::displayMidiInputEvents);
    addCheck(*display, tr("List outgoing events"), {}, ChangedSetting::displayMidiOutputEvents);
    addCheck(*display, tr("Large letters in the list"), {}, ChangedSetting::largeDisplayFont);
    addCheck(*display, tr("Bytes beside names"), tr("Each event in the list with its bytes, 90 3C 64"),
             ChangedSetting::displayNumbers);
    auto* const height = new NumberField(this);
    height->showValue(40, 2000, models.settings.value(ChangedSetting::displayHeight));
    connect(height, &NumberField::letGo, this,
            [this, height] { models_.settings.set(ChangedSetting::displayHeight, height->value()); });
    labelled(*display, tr("Height of the list"), height,
             tr("In pixels, as far as there is room; dragging the edge of its row sets it, too"));
    auto* const colours = new MenuBox(this);
    colours->addItems(paletteNames());
    colours->setCurrentText(paletteName());
    connect(colours, &QComboBox::textActivated, this, &SetupDialog::paletteChosen);
    labelled(*display, tr("Colours"), colours, tr("How the window is drawn"));
    display->addStretch(1);
    auto* const recording = page(tr("Recording"));
    addCheck(*recording, tr("Record everything that is played"), tr("The last stretch can be saved as a MIDI file"),
             ChangedSetting::retroRecordEnabled);
    auto* const size = new NumberField(this);
    size->setRange(0, 9999);
    size->setValue(models.settings.value(ChangedSetting::retroRecordBufferSize));
    connect(size, &NumberField::letGo, this,
            [this, size] { models_.settings.set(ChangedSetting::retroRecordBufferSize, size->value()); });
    labelled(*recording, tr("Full files that are kept"), size,
             tr("Each holds 100,000 bytes, some 10,000 notes; what is older is given up"));
    recording->addStretch(1);
    auto* const window = page(tr("Window"));
    addCheck(*window, tr("Always on top"), tr("Other windows do not cover this one"), ChangedSetting::alwaysOnTop);
    addCheck(*window, tr("Dock to the bottom edge"), tr("The window lies along the bottom of the screen"),
             ChangedSetting::dockToBottomEdge);
    addCheck(*window, tr("Border in the colours of the window"), {}, ChangedSetting::useSkinBorder);
    addCheck(*window, tr("Clicked notes take part in zones"),
             tr("What is struck on the music keyboard is transposed by its zone"),
             ChangedSetting::clickZoneChannelTranspose);
    auto* const mouse = new NumberField(this);
    mouse->setRange(1, 10);
    mouse->setValue(models.settings.value(ChangedSetting::mouseSensitivity));
    connect(mouse, &NumberField::letGo, this,
            [this, mouse] { models_.settings.set(ChangedSetting::mouseSensitivity, mouse->value()); });
    labelled(*window, tr("Sensitivity of the mouse"), mouse, tr("How far a drag moves a value"));
    window->addStretch(1);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::accept);
    all->addWidget(buttons);
    resize(grid(100), grid(90));
}

void SetupDialog::fillPorts() {
    delete ports_;
    ports_ = new QWidget(this);
    auto* const list = new QVBoxLayout(ports_);
    list->setContentsMargins(0, 0, 0, 0);
    list->setSpacing(grid(2));
    const auto add = [&](const QString& title, const auto& ports, auto enable) {
        auto* const label = new QLabel(title, ports_);
        label->setObjectName("PanelTitle");
        list->addWidget(label);
        for (std::size_t i = 0; i < ports.size(); ++i) {
            auto* const box = new QCheckBox(QString::fromStdString(ports[i].name), ports_);
            box->setChecked(ports[i].enabled);
            box->setEnabled(ports[i].present);
            box->setAccessibleName(title + " " + box->text());
            connect(box, &QCheckBox::clicked, this, [enable, i](bool on) { enable(static_cast<int>(i), on); });
            list->addWidget(box);
        }
        if (ports.empty()) {
            list->addWidget(new QLabel(tr("none found"), ports_));
        }
    };
    add(tr("Inputs"), models_.ports.inputs(),
        [this](int port, bool on) { models_.backend().postEnableMidiInput(port, on); });
    add(tr("Outputs"), models_.ports.outputs(),
        [this](int port, bool on) { models_.backend().postEnableMidiOutput(port, on); });
    list->addStretch(1);
    portsPage_->addWidget(ports_);
    ports_->show();
    fillOutputs();
}

void SetupDialog::fillOutputs() {
    output_->clear();
    const auto& outputs = models_.ports.outputs();
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        if (outputs[i].enabled) {
            output_->addItem(QString::fromStdString(outputs[i].name), static_cast<int>(i));
        }
    }
    output_->setCurrentIndex(output_->findData(models_.settings.value(ChangedSetting::defaultOutput)));
    output_->setEnabled(output_->count() > 0);
}

void SetupDialog::addCheck(QVBoxLayout& page, const QString& text, const QString& help, ChangedSetting setting) {
    auto* const box = new QCheckBox(text, this);
    box->setAccessibleName(text);
    box->setToolTip(help);
    box->setChecked(models_.settings.isOn(setting));
    connect(box, &QCheckBox::clicked, this, [this, setting](bool on) { models_.settings.set(setting, on ? 1 : 0); });
    page.addWidget(box);
}

} // namespace Desktop
